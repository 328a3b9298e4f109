// Distances from a focus point.
// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

#include "filters/effects/effects.h"

namespace pixvane::filters {

/// A whole number, in a double since the point may lie anywhere.
inline double distance(const Focus& focus, std::int32_t x, std::int32_t y) {
    const double dx = static_cast<double>(focus.x) - x;
    const double dy = static_cast<double>(focus.y) - y;
    return std::trunc(std::sqrt(dx * dx + dy * dy));
}

/// Where the effect is complete.
inline double full_distance(const Focus& focus) {
    return static_cast<double>(focus.radius) + static_cast<double>(focus.transition);
}

}  // namespace pixvane::filters
