// The row filters of PNG.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace pixvane::codecs {

enum PngFilter : std::uint8_t { kPngNone = 0, kPngSub = 1, kPngUp = 2, kPngAverage = 3, kPngPaeth = 4 };
constexpr std::size_t kPngFilters = 5;

/// Undoes a filter in place. `above` is the finished row before it, zeros for the first. False for a filter
/// that doesn't exist. `size` is a multiple of `bytesPerPixel`, which is 1 to 4.
bool unfilter_png_row(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                      std::size_t bytesPerPixel);

/// What filter_png_row() needs around its rows: zeros before and after them, and room after its output.
constexpr std::size_t kPngRowMargin = 64;

/// Chooses the filter that leaves the least, by the sum of what it leaves as signed bytes, and writes what it
/// leaves to `out`, which is touched up to kPngRowMargin bytes beyond `size`.
PngFilter filter_png_row(const std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                         std::size_t bytesPerPixel, std::uint8_t* out);

}  // namespace pixvane::codecs
