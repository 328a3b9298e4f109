// Pictures placed on a gradient.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/gradient.h"
#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// Draws `source` with its top left corner at (left, top), source-over, on a gradient over the whole of the
/// target. Only rows first..last of the target are written. The source must lie within the target.
void place_on_gradient_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t left, std::int32_t top,
                            const LinearGradient& gradient, std::int32_t first, std::int32_t last);

}  // namespace pixvane::filters
