// Writes PNG files.
// SPDX-License-Identifier: MIT
#include <libdeflate.h>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

#include "platform/codecs/deflate.h"
#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/opacity.h"
#include "platform/codecs/output.h"
#include "platform/codecs/pixel_rows.h"
#include "platform/codecs/png_chunks.h"
#include "platform/codecs/png_filter.h"

namespace pixvane::codecs {
namespace {

// Blocks of about this size: the codes follow the picture's changes, and all of it stays in the cache.
constexpr std::size_t kBlockBytes = 131072;
// The format's chunks end at 2 GiB.
constexpr std::size_t kMostInChunk = std::size_t{1} << 30;

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
        begin(type);
        output_.append(body);
        end();
    }

    /// What is appended to the output until end() is the chunk's body.
    void begin(const char (&type)[5]) {
        start_ = output_.size();
        std::memcpy(output_.room(8) + 4, type, 4);
        output_.add(8);
    }
    void end() {
        std::uint8_t* const crc = output_.room(4);
        std::uint8_t* const p = output_.data() + start_;
        put_big32(p, static_cast<std::uint32_t>(body_size()));
        put_big32(crc, libdeflate_crc32(0, p + 4, body_size() + 4));
        output_.add(4);
    }
    std::size_t body_size() const { return output_.size() - start_ - 8; }
    Output& output() { return output_; }

    ByteBuffer take() { return output_.take(); }

private:
    Output output_;
    std::size_t start_ = 0;
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
    static constexpr std::uint8_t kHead[] = {'I', 'C', 'C', ' ', 'p', 'r', 'o', 'f', 'i', 'l', 'e', 0, 0};
    const Compressor compressor = make_compressor(6);
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), profile.size());
    png.begin("iCCP");
    png.output().append(kHead);
    png.output().add(libdeflate_zlib_compress(compressor.get(), profile.data(), profile.size(),
                                              png.output().room(most), most));
    png.end();
}

void write_resolution(PngWriter& png, Resolution resolution) {
    if (!resolution.known()) return;
    std::uint8_t body[9];
    put_big32(body, dots_per_metre(resolution.x));
    put_big32(body + 4, dots_per_metre(resolution.y));
    body[8] = 1;  // per metre
    png.chunk("pHYs", body);
}

/// The rows of a picture, one after the other, as the filters want them: packed, with the row before, and
/// with zeros around them.
class PackedRows {
public:
    PackedRows(ConstPixelBuffer picture, std::size_t bytesPerPixel)
        : picture_(picture),
          bytesPerPixel_(bytesPerPixel),
          here_(size() + 2 * kPngRowMargin),
          above_(size() + 2 * kPngRowMargin) {}

    std::size_t size() const { return static_cast<std::size_t>(picture_.width) * bytesPerPixel_; }
    bool done() const { return next_ == picture_.height; }
    /// Filters the next row into size() + 1 bytes.
    void filter_next(std::uint8_t* out) {
        pack_pixels(picture_.row(next_++), here_.data() + kPngRowMargin, bytesPerPixel_,
                    static_cast<std::size_t>(picture_.width));
        out[0] = filter_png_row(here_.data() + kPngRowMargin, above_.data() + kPngRowMargin, size(),
                                bytesPerPixel_, out + 1);
        std::swap(here_, above_);
    }

private:
    ConstPixelBuffer picture_;
    std::size_t bytesPerPixel_;
    std::vector<std::uint8_t> here_;
    std::vector<std::uint8_t> above_;
    std::int32_t next_ = 0;
};

void write_pixels(PngWriter& png, ConstPixelBuffer picture, std::size_t bytesPerPixel) {
    PackedRows rows(picture, bytesPerPixel);
    const std::size_t rowBytes = rows.size() + 1;
    const std::size_t blockRows = std::max<std::size_t>(1, kBlockBytes / rowBytes);
    Deflater deflater(blockRows * rowBytes);
    png.begin("IDAT");
    Deflater::begin(png.output());
    while (!rows.done()) {
        if (png.body_size() > kMostInChunk) {
            png.end();
            png.begin("IDAT");
        }
        std::size_t size = 0;
        for (; size < blockRows * rowBytes && !rows.done(); size += rowBytes)
            rows.filter_next(deflater.input() + size);
        deflater.add(size, rows.done(), png.output());
    }
    deflater.end(png.output());
    png.end();
}

}  // namespace

bool encode_png(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file) {
    const PngColor color = is_opaque(picture) ? kPngRgb : kPngRgba;
    PngWriter png(picture.count() * 2);
    write_header(png, picture, color);
    write_profile(png, profile_of(options));
    write_resolution(png, resolution_of(options));
    write_pixels(png, picture, color == kPngRgb ? 3 : 4);
    png.chunk("IEND", {});
    file = png.take();
    return true;
}

}  // namespace pixvane::codecs
