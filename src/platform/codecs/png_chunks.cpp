// The chunks of a PNG file.
// SPDX-License-Identifier: MIT
#include "platform/codecs/png_chunks.h"

#include <libdeflate.h>

#include <algorithm>

#include "platform/codecs/inflate.h"

namespace pixvane::codecs {
namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kSignatureSize = sizeof kSignature - 1;
constexpr std::size_t kHeaderSize = 13;

struct Chunk {
    ByteSpan type;  // four letters
    ByteSpan body;
    bool intact = false;

    bool is(const char (&name)[5]) const { return std::memcmp(type.data(), name, 4) == 0; }
    bool is_critical() const { return (type[0] & 0x20) == 0; }
};

/// Takes one chunk off `rest`. False at the end, or if the chunk reaches beyond it.
bool next_chunk(ByteSpan& rest, Chunk& chunk) {
    if (rest.size() < 12) return false;
    const std::size_t size = big32(rest.data());
    if (size > rest.size() - 12) return false;
    chunk.type = rest.subspan(4, 4);
    chunk.body = rest.subspan(8, size);
    chunk.intact = libdeflate_crc32(0, rest.data() + 4, size + 4) == big32(rest.data() + 8 + size);
    rest = rest.subspan(12 + size);
    return true;
}

bool parse_header(ByteSpan body, PngHeader& header) {
    if (body.size() != kHeaderSize) return false;
    header.width = big32(body.data());
    header.height = big32(body.data() + 4);
    header.bitDepth = body[8];
    header.color = body[9];
    header.interlaced = body[12] != 0;
    return header.bits_per_pixel() != 0;
}

void read_profile(ByteSpan body, FileExtras& extras) {
    const auto nameEnd =
        std::find(body.begin(), body.begin() + std::min<std::ptrdiff_t>(80, std::ssize(body)), 0);
    if (body.end() - nameEnd < 2 || nameEnd[1] != 0) return;
    keep_profile(inflate_unknown_size({nameEnd + 2, body.end()}, kLargestProfile), extras);
}

void read_resolution(ByteSpan body, FileExtras& extras) {
    if (body.size() == 9 && body[8] == 1)
        keep_resolution(big32(body.data()) * kMetresPerInch, big32(body.data() + 4) * kMetresPerInch, extras);
}

}  // namespace

std::uint32_t PngHeader::bits_per_pixel() const {
    const bool whole = bitDepth == 8 || bitDepth == 16;
    const bool part = bitDepth == 1 || bitDepth == 2 || bitDepth == 4;
    switch (color) {
        case kPngGrey:
            return whole || part ? bitDepth : 0;
        case kPngRgb:
            return whole ? 3u * bitDepth : 0;
        case kPngPalette:
            return part || bitDepth == 8 ? bitDepth : 0;
        case kPngGreyAlpha:
            return whole ? 2u * bitDepth : 0;
        case kPngRgba:
            return whole ? 4u * bitDepth : 0;
        default:
            return 0;
    }
}

bool is_png(ByteSpan file) { return starts_with(file, kSignature); }

std::optional<PngHeader> read_png_header(ByteSpan file) {
    ByteSpan rest = piece(file, kSignatureSize);
    Chunk chunk;
    PngHeader header;
    if (!is_png(file) || !next_chunk(rest, chunk) || !chunk.is("IHDR") || !chunk.intact) return {};
    if (!parse_header(chunk.body, header)) return {};
    return header;
}

std::optional<PngChunks> read_png_chunks(ByteSpan file) {
    PngChunks png;
    const std::optional<PngHeader> header = read_png_header(file);
    if (!header) return {};
    png.header = *header;
    ByteSpan rest = file.subspan(kSignatureSize);
    Chunk chunk;
    next_chunk(rest, chunk);  // the header
    bool sound = true;
    bool dataEnded = false;
    while (next_chunk(rest, chunk)) {
        sound = sound && (chunk.intact || !chunk.is_critical());
        if (chunk.is("IDAT")) {
            sound = sound && !dataEnded;
            png.data.push_back(chunk.body);
            png.dataSize += chunk.body.size();
            continue;
        }
        dataEnded = !png.data.empty();
        if (chunk.is("IEND")) {
            png.flawless = sound;
            break;
        }
        if (chunk.is("PLTE")) png.palette = chunk.body;
        if (!chunk.intact) continue;
        if (chunk.is("tRNS")) png.transparency = chunk.body;
        if (chunk.is("pHYs")) read_resolution(chunk.body, png.extras);
        // Grey pictures have grey profiles, which are dropped; a profile for RGB in one is a mistake.
        if (chunk.is("iCCP") && (header->color & kPngRgb) != 0) read_profile(chunk.body, png.extras);
        if (chunk.is_critical() && !chunk.is("PLTE")) sound = false;
    }
    return png;
}

}  // namespace pixvane::codecs
