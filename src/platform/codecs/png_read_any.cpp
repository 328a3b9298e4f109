// Every kind of PNG file, through libpng.
// SPDX-License-Identifier: MIT
#include <png.h>

#include <csetjmp>

#include "core/compose.h"
#include "platform/codecs/png_chunks.h"

namespace pixvane::codecs {
namespace {

/// libpng leaves a failed call by a long jump. A function that sets the jump holds nothing with a
/// destructor, and keeps what it needs afterwards in the object, not in local variables.
class LibpngReader {
public:
    explicit LibpngReader(ByteSpan file) : rest_(file) {
        png_ = png_create_read_struct(
            PNG_LIBPNG_VER_STRING, nullptr, [](png_structp png, png_const_charp) { png_longjmp(png, 1); },
            [](png_structp, png_const_charp) {});
        if (png_ != nullptr) info_ = png_create_info_struct(png_);
    }
    ~LibpngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    LibpngReader(const LibpngReader&) = delete;
    LibpngReader& operator=(const LibpngReader&) = delete;

    bool valid() const { return info_ != nullptr; }
    bool started() const { return rowsRead_ > 0; }

    /// Ends early, with what could be read, where the file is broken.
    void read(PixelBuffer target) {
        if (setjmp(png_jmpbuf(png_)) != 0) return;
        png_set_read_fn(png_, this, [](png_structp png, png_bytep bytes, size_t size) {
            if (!static_cast<LibpngReader*>(png_get_io_ptr(png))->take(bytes, size))
                png_error(png, "the file ends");
        });
        png_set_user_limits(png_, kMaxSide, kMaxSide);
        png_set_chunk_cache_max(png_, 100);
        png_set_chunk_malloc_max(png_, kLargestProfile);
        // Only what changes pixels is of use here; the rest would be kept, and could be large.
        png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_read_info(png_, info_);
        if (png_get_image_width(png_, info_) != static_cast<png_uint_32>(target.width) ||
            png_get_image_height(png_, info_) != static_cast<png_uint_32>(target.height))
            return;
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        png_set_bgr(png_);
        png_set_add_alpha(png_, 0xFF, PNG_FILLER_AFTER);
        const int passes = png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        if (png_get_rowbytes(png_, info_) != static_cast<std::size_t>(target.width) * sizeof(Pixel)) return;
        for (int pass = 0; pass < passes; ++pass) {
            for (std::int32_t y = 0; y < target.height; ++y, ++rowsRead_)
                png_read_row(png_, reinterpret_cast<png_bytep>(target.row(y)), nullptr);
        }
    }

private:
    bool take(png_bytep bytes, std::size_t size) {
        if (size > rest_.size()) return false;
        std::memcpy(bytes, rest_.data(), size);
        rest_ = rest_.subspan(size);
        return true;
    }

    ByteSpan rest_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    std::int64_t rowsRead_ = 0;
};

}  // namespace

bool decode_png_any(ByteSpan file, PixelBuffer target) {
    LibpngReader reader(file);
    if (!reader.valid()) return false;
    fill(target, 0);
    reader.read(target);
    return reader.started();
}

}  // namespace pixvane::codecs
