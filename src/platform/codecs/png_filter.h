// The row filters of PNG.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_buffer.h"

namespace pixvane::codecs {

enum PngFilter : std::uint8_t { kPngNone = 0, kPngSub = 1, kPngUp = 2, kPngAverage = 3, kPngPaeth = 4 };

/// Undoes a filter in place. `above` is the finished row before it, zeros for the first. False for a filter
/// that doesn't exist.
bool unfilter_png_row(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                      std::size_t bytesPerPixel);

}  // namespace pixvane::codecs
