// Run-length compressed device-independent bitmaps.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "core/byte_buffer.h"
#include "core/pixel_buffer.h"

namespace pixvane::codecs {

using DibPalette = std::array<Pixel, 256>;

/// 4 or 8 bits a pixel. Runs that leave the picture are cut off, pixels that the data skips are not
/// touched, and data that ends early ends the picture.
void decode_dib_rle(ByteSpan data, std::uint32_t bitsPerPixel, bool topDown, const DibPalette& palette,
                    PixelBuffer target);

}  // namespace pixvane::codecs
