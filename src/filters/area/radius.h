// The limit of all filters with a window around each pixel.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace pixvane::filters {

/// The largest radius of a window; a larger one is refused.
constexpr std::int32_t kMaxWindowRadius = 16384;

}  // namespace pixvane::filters
