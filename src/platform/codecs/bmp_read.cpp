// Reads BMP files.
// SPDX-License-Identifier: MIT
#include "platform/codecs/dib.h"

namespace pixvane::codecs {
namespace {

constexpr std::size_t kFileHeader = 14;
// A run of 255 pixels takes two bytes, a step past 255 rows four.
constexpr std::uint64_t kMostRlePixelsPerByte = 65536;

bool recognises(ByteSpan file) { return starts_with(file, "BM"); }

bool measure(ByteSpan file, PictureSize& size) {
    const std::optional<DibHeader> header = read_dib_header(piece(file, kFileHeader));
    if (!header) return false;
    size = {header->width, header->height};
    return true;
}

bool could_hold(std::uint64_t bytes, const DibHeader& header) {
    const auto pixels = static_cast<std::uint64_t>(header.width) * static_cast<std::uint64_t>(header.height);
    if (header.compression == DibCompression::Rle4 || header.compression == DibCompression::Rle8)
        return pixels / kMostRlePixelsPerByte <= bytes;
    return pixels * header.bitsPerPixel / 8 <= bytes;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    const ByteSpan dib = piece(file, kFileHeader);
    std::optional<DibHeader> header = read_dib_header(dib);
    if (frame != 0 || !header || !is_picture_size(header->width, header->height)) return false;
    if (!could_hold(file.size(), *header)) return false;
    auto bitmap = Bitmap::create(header->width, header->height);
    if (!bitmap) return false;
    // Old writers leave the offset of the pixels out; then they follow the palette.
    const std::size_t offset = little32(file.data() + 10);
    const ByteSpan pixels = offset == 0 ? piece(dib, header->palette_end()) : piece(file, offset);
    if (!decode_dib_pixels(dib, *header, pixels, bitmap->pixels())) return false;
    image = {std::move(bitmap), 1, std::move(header->extras)};
    return true;
}

}  // namespace

const Reader kBmpReader{recognises, measure, decode};

}  // namespace pixvane::codecs
