// Quarter turns and flips.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// Turns clockwise by (type mod 4) * 90 degrees, then flips horizontally if type is 4 or more; type is 0..7.
/// The target has the source's size, with sides exchanged for odd types; the memory must be different.
/// Pixels move whole, alpha included.
void rotate_flip(ConstPixelBuffer source, PixelBuffer target, std::int32_t type);
/// Rows first..last of the target of rotate_flip(), the rest of it untouched; for a picture that is done in
/// parts.
void rotate_flip_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t type, std::int32_t first,
                      std::int32_t last);

}  // namespace pixvane::filters
