// Reads PNG files.
// SPDX-License-Identifier: MIT
#include "platform/codecs/format.h"
#include "platform/codecs/png_chunks.h"

namespace pixvane::codecs {
namespace {

// What deflate can make of a byte at the very best.
constexpr std::uint64_t kMostInflation = 1032;

bool measure(ByteSpan file, PictureSize& size) {
    const std::optional<PngHeader> header = read_png_header(file);
    if (!header) return false;
    size = {header->width, header->height};
    return true;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    if (frame != 0) return false;
    std::optional<PngChunks> png = read_png_chunks(file);
    if (!png || !is_picture_size(png->header.width, png->header.height)) return false;
    if (png->header.row_bytes() * png->header.height / kMostInflation > file.size()) return false;
    auto bitmap = Bitmap::create(png->header.width, png->header.height);
    if (!bitmap) return false;
    if (!decode_png_fast(*png, bitmap->pixels()) && !decode_png_any(file, bitmap->pixels())) return false;
    image = {std::move(bitmap), 1, std::move(png->extras)};
    return true;
}

}  // namespace

const Reader kPngReader{is_png, measure, decode};

}  // namespace pixvane::codecs
