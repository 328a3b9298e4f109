// The headers of device-independent bitmaps, and their plain layouts.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <bit>

#include "core/compose.h"
#include "platform/codecs/dib.h"
#include "platform/codecs/dib_rle.h"

namespace pixvane::codecs {
namespace {

constexpr std::size_t kCoreHeader = 12;   // OS/2 1.x
constexpr std::size_t kShortHeader = 16;  // OS/2 2.x, the shortest
constexpr std::size_t kInfoHeader = 40;
constexpr std::size_t kMaskedHeader = 52;
constexpr std::size_t kAlphaHeader = 56;
constexpr std::size_t kOs2Header = 64;
constexpr std::size_t kV5Header = 124;
constexpr std::uint32_t kEmbeddedProfile = 0x4D424544;  // "MBED"

bool is_depth(std::uint32_t bits) {
    return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

bool fits(DibCompression compression, std::uint32_t bits) {
    switch (compression) {
        case DibCompression::None:
            return true;
        case DibCompression::Rle8:
            return bits == 8;
        case DibCompression::Rle4:
            return bits == 4;
        case DibCompression::Bitfields:
        case DibCompression::AlphaBitfields:
            return bits == 16 || bits == 32;
    }
    return false;
}

bool read_core_header(ByteSpan dib, DibHeader& header) {
    header.width = little16(dib.data() + 4);
    header.height = little16(dib.data() + 6);
    header.bitsPerPixel = little16(dib.data() + 10);
    header.paletteOffset = kCoreHeader;
    header.paletteEntrySize = 3;
    if (header.bitsPerPixel <= 8) header.paletteCount = std::size_t{1} << header.bitsPerPixel;
    return is_depth(header.bitsPerPixel);
}

void read_masks(ByteSpan dib, std::size_t headerSize, DibHeader& header) {
    const bool masked = header.compression == DibCompression::Bitfields ||
                        header.compression == DibCompression::AlphaBitfields;
    if (!masked) return;
    // With the shortest header the masks stand between it and the palette.
    std::size_t count = headerSize >= kAlphaHeader ? 4 : 3;
    if (headerSize < kMaskedHeader) {
        if (header.compression == DibCompression::AlphaBitfields) count = 4;
        header.paletteOffset += 4 * count;
    }
    for (std::size_t i = 0; i < count && dib.size() >= kInfoHeader + 4 * (i + 1); ++i)
        header.masks[i] = little32(dib.data() + kInfoHeader + 4 * i);
}

void read_profile(ByteSpan dib, std::size_t headerSize, FileExtras& extras) {
    if (headerSize < kV5Header || little32(dib.data() + 56) != kEmbeddedProfile) return;
    keep_profile(piece(dib, little32(dib.data() + 112), little32(dib.data() + 116)), extras);
}

bool read_info_header(ByteSpan dib, std::size_t headerSize, DibHeader& header) {
    header.width = signed_little32(dib.data() + 4);
    header.height = signed_little32(dib.data() + 8);
    header.topDown = header.height < 0;
    if (header.topDown) header.height = -header.height;
    header.bitsPerPixel = little16(dib.data() + 14);
    header.paletteOffset = headerSize;
    if (header.bitsPerPixel <= 8) header.paletteCount = std::size_t{1} << header.bitsPerPixel;
    if (headerSize < kInfoHeader) return is_depth(header.bitsPerPixel);

    header.compression = static_cast<DibCompression>(little32(dib.data() + 16));
    // OS/2 gives the same numbers to other compressions.
    if (headerSize == kOs2Header && header.compression >= DibCompression::Bitfields) return false;
    if (!is_depth(header.bitsPerPixel) || !fits(header.compression, header.bitsPerPixel)) return false;
    keep_resolution(signed_little32(dib.data() + 24) * kMetresPerInch,
                    signed_little32(dib.data() + 28) * kMetresPerInch, header.extras);
    const std::size_t used = little32(dib.data() + 32);
    if (used != 0 && header.bitsPerPixel <= 8) header.paletteCount = std::min(used, header.paletteCount);
    if (headerSize != kOs2Header) {
        read_masks(dib, headerSize, header);
        read_profile(dib, headerSize, header.extras);
    }
    return true;
}

/// One channel of a pixel whose channels are bits of a number.
struct Channel {
    explicit Channel(std::uint32_t mask)
        : mask_(mask),
          shift_(mask == 0 ? 0 : std::countr_zero(mask)),
          largest_(mask == 0 ? 1 : mask >> shift_) {}

    std::uint32_t operator()(std::uint32_t pixel) const {
        const std::uint64_t value = (pixel & mask_) >> shift_;
        return static_cast<std::uint32_t>((value * 255 + largest_ / 2) / largest_);
    }

private:
    std::uint32_t mask_;
    int shift_;
    std::uint64_t largest_;
};

void decode_masked(const std::uint8_t* row, const std::array<std::uint32_t, 4>& masks, bool wide,
                   Pixel* pixels, std::int32_t width) {
    constexpr std::array<std::uint32_t, 4> kOwn{0xFF0000, 0xFF00, 0xFF, kOpaque};
    if (wide && masks == kOwn) {
        std::memcpy(pixels, row, static_cast<std::size_t>(width) * 4);
        return;
    }
    const Channel red(masks[0]);
    const Channel green(masks[1]);
    const Channel blue(masks[2]);
    const Channel alpha(masks[3]);
    const std::size_t step = wide ? 4 : 2;
    for (std::int32_t x = 0; x < width; ++x, row += step) {
        const std::uint32_t pixel = wide ? little32(row) : little16(row);
        pixels[x] = make_pixel(masks[3] == 0 ? 255 : alpha(pixel), red(pixel), green(pixel), blue(pixel));
    }
}

void decode_row(const std::uint8_t* row, const DibHeader& header, const DibPalette& palette, Pixel* pixels,
                std::int32_t width) {
    const std::uint32_t bits = header.bitsPerPixel;
    if (bits <= 8) {
        const std::uint32_t last = (1u << bits) - 1;
        for (std::uint32_t x = 0; x < static_cast<std::uint32_t>(width); ++x) {
            const std::uint32_t bit = x * bits;
            pixels[x] = palette[row[bit / 8] >> (8 - bits - bit % 8) & last];
        }
    } else if (bits == 24) {
        for (std::int32_t x = 0; x < width; ++x, row += 3)
            pixels[x] = make_pixel(255, row[2], row[1], row[0]);
    } else {
        std::array<std::uint32_t, 4> masks = header.masks;
        // Without masks the fourth byte of a pixel has no meaning, whatever is in it.
        if (header.compression == DibCompression::None)
            masks = bits == 16 ? std::array<std::uint32_t, 4>{0x7C00, 0x3E0, 0x1F, 0}
                               : std::array<std::uint32_t, 4>{0xFF0000, 0xFF00, 0xFF, 0};
        decode_masked(row, masks, bits == 32, pixels, width);
    }
}

/// Colours that the file doesn't have are black.
DibPalette read_palette(ByteSpan dib, const DibHeader& header) {
    DibPalette palette;
    palette.fill(kOpaque);
    const ByteSpan entries = piece(dib, header.paletteOffset, header.paletteEntrySize * header.paletteCount);
    const std::size_t count = entries.size() / header.paletteEntrySize;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* bgr = entries.data() + i * header.paletteEntrySize;
        palette[i] = make_pixel(255, bgr[2], bgr[1], bgr[0]);
    }
    return palette;
}

}  // namespace

std::optional<DibHeader> read_dib_header(ByteSpan dib) {
    if (dib.size() < kCoreHeader) return {};
    const std::size_t size = little32(dib.data());
    if (size > dib.size() || (size != kCoreHeader && size < kShortHeader)) return {};
    DibHeader header;
    const bool valid =
        size == kCoreHeader ? read_core_header(dib, header) : read_info_header(dib, size, header);
    if (!valid) return {};
    return header;
}

bool decode_dib_pixels(ByteSpan dib, const DibHeader& header, ByteSpan pixels, PixelBuffer target) {
    const DibPalette palette = read_palette(dib, header);
    if (header.compression == DibCompression::Rle4 || header.compression == DibCompression::Rle8) {
        fill(target, palette[0]);
        decode_dib_rle(pixels, header.bitsPerPixel, header.topDown, palette, target);
        return true;
    }
    const std::uint64_t rowBytes = (static_cast<std::uint64_t>(target.width) * header.bitsPerPixel + 7) / 8;
    const std::uint64_t stride = (rowBytes + 3) / 4 * 4;
    // Some writers leave out the padding of the last row.
    if (pixels.size() < stride * (static_cast<std::uint64_t>(target.height) - 1) + rowBytes) return false;
    for (std::int32_t i = 0; i < target.height; ++i) {
        const std::int32_t y = header.topDown ? i : target.height - 1 - i;
        decode_row(pixels.data() + stride * static_cast<std::uint64_t>(i), header, palette, target.row(y),
                   target.width);
    }
    return true;
}

}  // namespace pixvane::codecs
