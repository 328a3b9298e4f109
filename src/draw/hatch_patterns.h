// The patterns of hatched brushes.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace pixvane {

constexpr std::int32_t kHatchStyles = 53;

/// A pattern of 8 x 8 pixels that is repeated in both directions; the bit 8 y + x is set where the pixel (x,
/// y) belongs to the lines. `style` is 0 to kHatchStyles - 1.
std::uint64_t hatch_pattern(std::int32_t style);

}  // namespace pixvane
