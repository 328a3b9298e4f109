// Outlying channels in large windows, by what the columns of the window sum up to.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// As far as a column's sums fit 16 bits.
constexpr std::int32_t kLargestNoiseColumns = 127;

/// anti_noise() of a radius 1..kLargestNoiseColumns at a cost that does not depend on it. False, with nothing
/// written, if there is no memory, or no vectors.
bool anti_noise_by_columns(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                           std::int32_t first, std::int32_t last);

}  // namespace pixvane::filters
