// The row filters of PNG, and the layouts of its pixels.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_buffer.h"

namespace pixvane::codecs {

enum PngFilter : std::uint8_t { kPngNone = 0, kPngSub = 1, kPngUp = 2, kPngAverage = 3, kPngPaeth = 4 };

/// Undoes a filter in place. `above` is the finished row before it, zeros for the first. False for a filter
/// that doesn't exist.
bool unfilter_png_row(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                      std::size_t bytesPerPixel);

/// Grey, grey and alpha, RGB or RGBA (1 to 4 bytes a pixel) to pixels.
void expand_png_row(const std::uint8_t* row, std::size_t bytesPerPixel, Pixel* pixels, std::int32_t width);

}  // namespace pixvane::codecs
