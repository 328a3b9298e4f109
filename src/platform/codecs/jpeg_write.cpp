// Writes JPEG files.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <vector>

#include "core/compose.h"
#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/jpeg_errors.h"
#include "platform/codecs/opacity.h"
#include "platform/codecs/output.h"

namespace pixvane::codecs {
namespace {

constexpr std::int32_t kRowsAtOnce = 16;
// Above this, colour is kept at full resolution: who asks for it wants to see no loss.
constexpr std::int32_t kMostSubsampledQuality = 95;

/// libjpeg's end of an Output.
struct JpegDestination {
    jpeg_destination_mgr base;
    Output* output;

    static JpegDestination& of(j_compress_ptr info) {
        return *reinterpret_cast<JpegDestination*>(info->dest);
    }
    bool open(std::size_t wanted) noexcept {
        try {
            base.next_output_byte = output->room(wanted);
            base.free_in_buffer = output->capacity() - output->size();
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }
    void install() {
        base.init_destination = [](j_compress_ptr info) {
            if (!of(info).open(1)) info->err->error_exit(reinterpret_cast<j_common_ptr>(info));
        };
        base.empty_output_buffer = [](j_compress_ptr info) -> boolean {
            // libjpeg calls when the room is full, and means all of it.
            JpegDestination& self = of(info);
            self.output->add(self.output->capacity() - self.output->size());
            if (!self.open(1)) info->err->error_exit(reinterpret_cast<j_common_ptr>(info));
            return TRUE;
        };
        base.term_destination = [](j_compress_ptr info) {
            JpegDestination& self = of(info);
            self.output->add(self.output->capacity() - self.output->size() - self.base.free_in_buffer);
        };
    }
};
static_assert(offsetof(JpegDestination, base) == 0);

class JpegCompressor {
public:
    JpegCompressor(Output& output, std::int32_t width) : scratch_(), width_(width) {
        info_.err = errors_.install();
        destination_.output = &output;
        destination_.install();
    }
    ~JpegCompressor() { jpeg_destroy_compress(&info_); }
    JpegCompressor(const JpegCompressor&) = delete;
    JpegCompressor& operator=(const JpegCompressor&) = delete;

    bool start(ConstPixelBuffer picture, const EncodeOptions& options) {
        const ByteSpan profile = profile_of(options);
        const Resolution resolution = resolution_of(options);
        if (setjmp(errors_.jump) != 0) return false;
        jpeg_create_compress(&info_);
        info_.dest = &destination_.base;
        info_.image_width = static_cast<JDIMENSION>(picture.width);
        info_.image_height = static_cast<JDIMENSION>(picture.height);
        info_.input_components = 4;
        info_.in_color_space = JCS_EXT_BGRX;
        jpeg_set_defaults(&info_);
        jpeg_set_quality(&info_, options.jpegQuality, TRUE);
        if (options.jpegQuality > kMostSubsampledQuality)
            info_.comp_info[0].h_samp_factor = info_.comp_info[0].v_samp_factor = 1;
        if (resolution.known()) {
            info_.density_unit = 1;
            info_.X_density = density(resolution.x);
            info_.Y_density = density(resolution.y);
        }
        jpeg_start_compress(&info_, TRUE);
        if (!profile.empty())
            jpeg_write_icc_profile(&info_, profile.data(), static_cast<unsigned int>(profile.size()));
        return true;
    }

    /// All rows, over white where they are not opaque.
    bool write(ConstPixelBuffer picture) {
        for (std::int32_t y = 0; y < picture.height; y += kRowsAtOnce) {
            const ConstPixelBuffer rows = picture.rows(y, std::min(y + kRowsAtOnce, picture.height));
            if (!write_rows(is_opaque(rows.data, rows.count()) ? rows : over_white(rows))) return false;
        }
        return finish();
    }

private:
    static UINT16 density(double dotsPerInch) {
        return static_cast<UINT16>(std::clamp(std::lround(dotsPerInch), 1L, 65535L));
    }

    ConstPixelBuffer over_white(ConstPixelBuffer rows) {
        scratch_.resize(static_cast<std::size_t>(width_) * kRowsAtOnce);
        const PixelBuffer target{scratch_.data(), rows.width, rows.height};
        flatten(target, rows, 0xFFFFFFFFu);
        return target;
    }

    bool write_rows(ConstPixelBuffer rows) {
        std::array<JSAMPROW, kRowsAtOnce> pointers;
        for (std::int32_t i = 0; i < rows.height; ++i)
            pointers[static_cast<std::size_t>(i)] =
                reinterpret_cast<JSAMPROW>(const_cast<Pixel*>(rows.row(i)));
        if (setjmp(errors_.jump) != 0) return false;
        const auto count = static_cast<JDIMENSION>(rows.height);
        return jpeg_write_scanlines(&info_, pointers.data(), count) == count;
    }

    bool finish() {
        if (setjmp(errors_.jump) != 0) return false;
        jpeg_finish_compress(&info_);
        return true;
    }

    jpeg_compress_struct info_{};
    JpegErrors errors_;
    JpegDestination destination_{};
    std::vector<Pixel> scratch_;
    std::int32_t width_;
};

}  // namespace

bool encode_jpeg(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file) {
    Output output(picture.count() / 2);
    JpegCompressor jpeg(output, picture.width);
    if (!jpeg.start(picture, options) || !jpeg.write(picture)) return false;
    file = output.take();
    return true;
}

}  // namespace pixvane::codecs
