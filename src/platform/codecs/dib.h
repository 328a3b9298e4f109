// Device-independent bitmaps: what BMP files and old icon entries hold.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <optional>

#include "core/bitmap.h"
#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"

namespace pixvane::codecs {

enum class DibCompression : std::uint32_t { None = 0, Rle8 = 1, Rle4 = 2, Bitfields = 3, AlphaBitfields = 6 };

struct DibHeader {
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool topDown = false;
    std::uint32_t bitsPerPixel = 0;
    DibCompression compression = DibCompression::None;
    std::array<std::uint32_t, 4> masks{};  ///< red, green, blue, alpha; zeros unless the header names them
    std::size_t paletteOffset = 0;         ///< from the start of the header
    std::size_t paletteEntrySize = 4;      ///< 3 for OS/2
    std::size_t paletteCount = 0;
    FileExtras extras;

    std::size_t palette_end() const { return paletteOffset + paletteEntrySize * paletteCount; }
};

/// Nothing if the bytes are no header of a kind that can be read. The size is as the header says.
std::optional<DibHeader> read_dib_header(ByteSpan dib);

/// Fills the target, which has the header's size, from `pixels`. False if the data is too short.
bool decode_dib_pixels(ByteSpan dib, const DibHeader& header, ByteSpan pixels, PixelBuffer target);

}  // namespace pixvane::codecs
