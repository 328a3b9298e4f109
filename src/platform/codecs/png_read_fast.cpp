// The common kinds of PNG files, inflated at once.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>

#include "platform/codecs/inflate.h"
#include "platform/codecs/pixel_rows.h"
#include "platform/codecs/png_chunks.h"
#include "platform/codecs/png_filter.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

using Palette = std::array<Pixel, 256>;

/// Indices beyond the palette are black, as if it went on.
Palette make_palette(const PngChunks& png) {
    Palette palette;
    palette.fill(kOpaque);
    const std::size_t count = std::min<std::size_t>(png.palette.size() / 3, 256);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* rgb = png.palette.data() + 3 * i;
        const std::uint32_t alpha = i < png.transparency.size() ? png.transparency[i] : 255;
        palette[i] = make_pixel(alpha, rgb[0], rgb[1], rgb[2]);
    }
    return palette;
}

bool is_common(const PngChunks& png) {
    if (!png.flawless || png.data.empty() || png.header.bitDepth != 8 || png.header.interlaced) return false;
    if (png.header.color == kPngPalette) return !png.palette.empty();
    return png.transparency.empty();  // else one colour is transparent
}

/// The whole stream in one piece, in `joined` if it comes in several.
ByteSpan whole_stream(const PngChunks& png, const Scratch& joined) {
    if (png.data.size() == 1) return png.data.front();
    std::uint8_t* end = joined.data();
    for (const ByteSpan part : png.data) end = std::copy(part.begin(), part.end(), end);
    return {joined.data(), end};
}

void expand_palette(const std::uint8_t* row, const Palette& palette, PixelBuffer target, std::int32_t y) {
    Pixel* const pixels = target.row(y);
    for (std::int32_t x = 0; x < target.width; ++x) pixels[x] = palette[row[x]];
}

}  // namespace

bool decode_png_fast(const PngChunks& png, PixelBuffer target) {
    if (!is_common(png)) return false;
    const std::size_t stride = static_cast<std::size_t>(png.header.row_bytes()) + 1;
    const std::size_t size = stride * static_cast<std::size_t>(target.height);
    const Scratch joined(png.data.size() == 1 ? 1 : png.dataSize);
    const Scratch raw(size);
    if (joined.data() == nullptr || raw.data() == nullptr) return false;
    if (!inflate_exactly(whole_stream(png, joined), raw.data(), size)) return false;

    const std::size_t bytesPerPixel = png.header.bits_per_pixel() / 8;
    const Palette palette = make_palette(png);
    const std::vector<std::uint8_t> zeros(stride);
    const std::uint8_t* above = zeros.data();
    for (std::int32_t y = 0; y < target.height; ++y) {
        std::uint8_t* const row = raw.data() + stride * static_cast<std::size_t>(y);
        if (!unfilter_png_row(row[0], row + 1, above, stride - 1, bytesPerPixel)) return false;
        above = row + 1;
        if (png.header.color == kPngPalette)
            expand_palette(above, palette, target, y);
        else
            expand_pixels(above, bytesPerPixel, target.row(y), static_cast<std::size_t>(target.width));
    }
    return true;
}

}  // namespace pixvane::codecs
