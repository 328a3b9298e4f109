// How random numbers become offsets of the channels.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace pixvane::filters {

/// How many numbers a pixel draws: an offset takes two, a size and a sign.
constexpr std::uint32_t noise_draws(bool sameForAll) { return sameForAll ? 2 : 6; }

/// What one unit of a draw is of the amount: a draw is at most 32767.
constexpr double kDrawUnit = 3.051850947599719e-5;
/// A second draw above this turns the sign; the draw's top bit tells.
constexpr std::int32_t kMiddleDraw = 16383;

}  // namespace pixvane::filters
