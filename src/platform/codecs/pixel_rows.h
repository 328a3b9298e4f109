// Pixels and the byte layouts that files have them in.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_buffer.h"

namespace pixvane::codecs {

/// Grey, grey and alpha, RGB or RGBA (1 to 4 bytes a pixel) to pixels.
void expand_pixels(const std::uint8_t* bytes, std::size_t channels, Pixel* pixels, std::size_t count);

/// Pixels to RGB or RGBA (3 or 4 bytes a pixel).
void pack_pixels(const Pixel* pixels, std::uint8_t* bytes, std::size_t channels, std::size_t count);

/// Pixels to BGR, 3 bytes a pixel.
void pack_bgr(const Pixel* pixels, std::uint8_t* bytes, std::size_t count);

/// Takes the alpha out of colours that were multiplied by it, rounded; colours above their alpha become 255.
void unpremultiply(Pixel* pixels, std::size_t count);

}  // namespace pixvane::codecs
