// Writes PNG files.
// SPDX-License-Identifier: MIT
#include <libdeflate.h>

#include <memory>
#include <new>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/opacity.h"
#include "platform/codecs/output.h"
#include "platform/codecs/png_chunks.h"
#include "platform/codecs/png_filter.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

constexpr int kFastest = 1;

using Compressor = std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)>;

Compressor make_compressor(int level) {
    Compressor compressor(libdeflate_alloc_compressor(level), libdeflate_free_compressor);
    if (!compressor) throw std::bad_alloc();
    return compressor;
}

class PngWriter {
public:
    explicit PngWriter(std::size_t guess) : output_(guess) {
        static constexpr std::uint8_t kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
        output_.append(kSignature);
    }

    void chunk(const char (&type)[5], ByteSpan body) {
        std::uint8_t* p = begin(type, body.size());
        if (!body.empty()) std::memcpy(p, body.data(), body.size());
        end(body.size());
    }

    /// Room for a chunk's body of up to `most` bytes; end() says how many there are.
    std::uint8_t* begin(const char (&type)[5], std::size_t most) {
        std::uint8_t* p = output_.room(most + 12);
        std::memcpy(p + 4, type, 4);
        return p + 8;
    }
    void end(std::size_t size) {
        std::uint8_t* p = output_.data() + output_.size();
        put_big32(p, static_cast<std::uint32_t>(size));
        put_big32(p + 8 + size, libdeflate_crc32(0, p + 4, size + 4));
        output_.add(size + 12);
    }

    ByteBuffer take() { return output_.take(); }

private:
    Output output_;
};

void write_header(PngWriter& png, ConstPixelBuffer picture, PngColor color) {
    std::uint8_t body[13] = {};
    put_big32(body, static_cast<std::uint32_t>(picture.width));
    put_big32(body + 4, static_cast<std::uint32_t>(picture.height));
    body[8] = 8;
    body[9] = color;
    png.chunk("IHDR", body);
}

void write_profile(PngWriter& png, ByteSpan profile) {
    if (profile.empty()) return;
    static constexpr char kName[] = "ICC profile";
    constexpr std::size_t kStart = sizeof kName + 1;  // with the name's zero; compression method 0
    const Compressor compressor = make_compressor(6);
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), profile.size());
    std::uint8_t* p = png.begin("iCCP", kStart + most);
    std::memcpy(p, kName, sizeof kName);
    p[sizeof kName] = 0;
    png.end(kStart +
            libdeflate_zlib_compress(compressor.get(), profile.data(), profile.size(), p + kStart, most));
}

void write_resolution(PngWriter& png, Resolution resolution) {
    if (!resolution.known()) return;
    std::uint8_t body[9];
    put_big32(body, dots_per_metre(resolution.x));
    put_big32(body + 4, dots_per_metre(resolution.y));
    body[8] = 1;  // per metre
    png.chunk("pHYs", body);
}

}  // namespace

bool encode_png(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file) {
    const PngColor color = is_opaque(picture) ? kPngRgb : kPngRgba;
    const std::size_t bytesPerPixel = color == kPngRgb ? 3 : 4;
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * bytesPerPixel;
    const std::size_t size = (rowBytes + 1) * static_cast<std::size_t>(picture.height);
    const Scratch filtered(size);
    if (filtered.data() == nullptr) return false;
    for (std::int32_t y = 0; y < picture.height; ++y) {
        std::uint8_t* row = filtered.data() + (rowBytes + 1) * static_cast<std::size_t>(y);
        *row++ = kPngUp;
        for (std::int32_t x = 0; x < picture.width; ++x, row += bytesPerPixel) {
            const Pixel above = y == 0 ? 0 : picture.row(y - 1)[x];
            const Pixel pixel = picture.row(y)[x];
            row[0] = static_cast<std::uint8_t>(red_of(pixel) - red_of(above));
            row[1] = static_cast<std::uint8_t>(green_of(pixel) - green_of(above));
            row[2] = static_cast<std::uint8_t>(blue_of(pixel) - blue_of(above));
            if (bytesPerPixel == 4) row[3] = static_cast<std::uint8_t>(alpha_of(pixel) - alpha_of(above));
        }
    }
    const Compressor compressor = make_compressor(kFastest);
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), size);
    if (most > 0x7FFFFFFF) return false;
    PngWriter png(most + 65536);
    write_header(png, picture, color);
    write_profile(png, profile_of(options));
    write_resolution(png, resolution_of(options));
    std::uint8_t* body = png.begin("IDAT", most);
    png.end(libdeflate_zlib_compress(compressor.get(), filtered.data(), size, body, most));
    png.chunk("IEND", {});
    file = png.take();
    return true;
}

}  // namespace pixvane::codecs
