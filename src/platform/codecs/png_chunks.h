// The chunks of a PNG file.
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"

namespace pixvane::codecs {

enum PngColor : std::uint8_t { kPngGrey = 0, kPngRgb = 2, kPngPalette = 3, kPngGreyAlpha = 4, kPngRgba = 6 };

struct PngHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint8_t bitDepth = 0;
    std::uint8_t color = 0;
    bool interlaced = false;

    /// Bits of one pixel; 0 for a kind that doesn't exist.
    std::uint32_t bits_per_pixel() const;
    /// Bytes of a row without the one that names its filter.
    std::uint64_t row_bytes() const { return (std::uint64_t{width} * bits_per_pixel() + 7) / 8; }
};

struct PngChunks {
    PngHeader header;
    std::vector<ByteSpan> data;  ///< of the IDAT chunks
    std::uint64_t dataSize = 0;
    ByteSpan palette;
    ByteSpan transparency;
    FileExtras extras;
    /// Every check sum right, everything in its place, and an end.
    bool flawless = false;
};

bool is_png(ByteSpan file);
std::optional<PngHeader> read_png_header(ByteSpan file);
/// What of the chunks can be read. Nothing if there is no header.
std::optional<PngChunks> read_png_chunks(ByteSpan file);

/// The kinds that most files are: 8 bits, not interlaced, whole. False for all others.
bool decode_png_fast(const PngChunks& chunks, PixelBuffer target);
/// Every kind, by libpng. Rows that are missing are transparent. False if there is not one row.
bool decode_png_any(ByteSpan file, PixelBuffer target);

}  // namespace pixvane::codecs
