// Reads JPEG files.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/jpeg_errors.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

constexpr int kProfileMarker = JPEG_APP0 + 2;
// Real progressive files have about ten; every one of them costs a pass over the whole picture.
constexpr int kMostScans = 100;
constexpr Pixel kMissing = 0xFF808080u;

class JpegDecompressor {
public:
    JpegDecompressor() { info_.err = errors_.install(); }
    ~JpegDecompressor() { jpeg_destroy_decompress(&info_); }
    JpegDecompressor(const JpegDecompressor&) = delete;
    JpegDecompressor& operator=(const JpegDecompressor&) = delete;

    bool read_header(ByteSpan file) {
        if (setjmp(errors_.jump) != 0) return false;
        jpeg_create_decompress(&info_);
        jpeg_mem_src(&info_, file.data(), static_cast<unsigned long>(file.size()));
        jpeg_save_markers(&info_, kProfileMarker, 0xFFFF);
        return jpeg_read_header(&info_, TRUE) == JPEG_HEADER_OK;
    }

    PictureSize size() const { return {info_.image_width, info_.image_height}; }

    /// Whether `bytes` bytes can hold the picture at all: Huffman codes take a bit for each block at least.
    bool could_be_held_by(std::size_t bytes) const {
        if (info_.arith_code) return true;
        int across = 1;
        int down = 1;
        for (int i = 0; i < info_.num_components; ++i) {
            across = std::max(across, info_.comp_info[i].h_samp_factor);
            down = std::max(down, info_.comp_info[i].v_samp_factor);
        }
        const std::int64_t blocks =
            (size().width + 8 * across - 1) / (8 * across) * ((size().height + 8 * down - 1) / (8 * down));
        return static_cast<std::uint64_t>(blocks) / 8 <= bytes;
    }

    /// Fills the bitmap; what the file doesn't have stays grey. False if it has nothing.
    bool read_pixels(PixelBuffer target) {
        const bool complete = read_rows(target);
        if (info_.out_color_space == JCS_CMYK) convert_cmyk(target.rows(0, rowsRead_));
        if (complete) return true;
        std::fill_n(target.row(rowsRead_), target.rows(rowsRead_, target.height).count(), kMissing);
        return rowsRead_ > 0;
    }

    void read_extras(FileExtras& extras) {
        JOCTET* profile = nullptr;
        unsigned int size = 0;
        if (info_.num_components == 3 && collect_profile(profile, size)) {
            const std::unique_ptr<JOCTET, decltype(&std::free)> owner(profile, std::free);
            keep_profile({profile, size}, extras);
        }
        if (!info_.saw_JFIF_marker || info_.density_unit == 0) return;
        const double unit = info_.density_unit == 2 ? kCentimetresPerInch : 1.0;
        keep_resolution(info_.X_density * unit, info_.Y_density * unit, extras);
    }

private:
    bool read_rows(PixelBuffer target) {
        if (setjmp(errors_.jump) != 0) return false;
        progress_.progress_monitor = [](j_common_ptr info) {
            if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMostScans)
                info->err->error_exit(info);
        };
        info_.progress = &progress_;
        info_.mem->max_memory_to_use =
            static_cast<long>(std::min<std::uint64_t>(memory_left(), std::numeric_limits<long>::max()));
        const bool inks = info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
        info_.out_color_space = inks ? JCS_CMYK : JCS_EXT_BGRA;
        jpeg_start_decompress(&info_);
        if (info_.output_components != 4) return false;
        while (rowsRead_ < target.height) {
            std::array<JSAMPROW, 16> rows;
            const std::int32_t count = std::min<std::int32_t>(rows.size(), target.height - rowsRead_);
            for (std::int32_t i = 0; i < count; ++i)
                rows[static_cast<std::size_t>(i)] = reinterpret_cast<JSAMPROW>(target.row(rowsRead_ + i));
            rowsRead_ += static_cast<std::int32_t>(
                jpeg_read_scanlines(&info_, rows.data(), static_cast<JDIMENSION>(count)));
        }
        return true;
    }

    bool collect_profile(JOCTET*& profile, unsigned int& size) {
        if (setjmp(errors_.jump) != 0) return false;
        return jpeg_read_icc_profile(&info_, &profile, &size);
    }

    /// Inks to light, in place: the four bytes of a pixel are C, M, Y, K.
    void convert_cmyk(PixelBuffer target) const {
        // Adobe's files hold 255 minus the ink.
        const std::uint32_t flip = info_.saw_Adobe_marker ? 0 : 255;
        for (std::size_t i = 0; i < target.count(); ++i) {
            std::array<std::uint8_t, 4> inks;
            std::memcpy(inks.data(), target.data + i, 4);
            const std::uint32_t k = inks[3] ^ flip;
            const auto light = [&](std::uint8_t ink) { return ((ink ^ flip) * k + 127) / 255; };
            target.data[i] = make_pixel(255, light(inks[0]), light(inks[1]), light(inks[2]));
        }
    }

    jpeg_decompress_struct info_{};
    JpegErrors errors_;
    jpeg_progress_mgr progress_{};
    std::int32_t rowsRead_ = 0;
};

bool recognises(ByteSpan file) { return starts_with(file, "\xFF\xD8\xFF"); }

bool measure(ByteSpan file, PictureSize& size) {
    JpegDecompressor jpeg;
    if (!jpeg.read_header(file)) return false;
    size = jpeg.size();
    return true;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    JpegDecompressor jpeg;
    if (frame != 0 || !jpeg.read_header(file) || !jpeg.could_be_held_by(file.size())) return false;
    auto bitmap = Bitmap::create(jpeg.size().width, jpeg.size().height);
    if (!bitmap || !jpeg.read_pixels(bitmap->pixels())) return false;
    FileExtras extras;
    jpeg.read_extras(extras);
    image = {std::move(bitmap), 1, std::move(extras)};
    return true;
}

}  // namespace

const Reader kJpegReader{recognises, measure, decode};

}  // namespace pixvane::codecs
