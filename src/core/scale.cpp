// Scaling: bilinear, and by the mean of what a pixel covers where a picture shrinks below one half.
// SPDX-License-Identifier: MIT
#include "core/scale.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "core/scale.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <optional>
#include <type_traits>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "core/pixel_rows.h"
#include "core/scale_bilinear-inl.h"
#include "core/scale_close-inl.h"
#include "core/scale_coarse-inl.h"
#include "core/scale_half-inl.h"
#include "core/scale_sums-inl.h"
#include "core/scratch.h"
#include "core/streaming.h"

#if HWY_ONCE
namespace pixvane {
namespace {

/// Of integers, halves up.
std::uint32_t rounded_quotient(std::uint64_t dividend, std::uint64_t divisor) {
    return static_cast<std::uint32_t>((2 * dividend + divisor) / (2 * divisor));
}

/// Lays a pixel over what is below it.
Pixel laid_over(Ground ground, Pixel target, Pixel pixel) {
    if (ground.kind == Ground::Kind::Nothing) return pixel;
    return source_over(ground.kind == Ground::Kind::Color ? ground.color : target, pixel);
}

void copy_rows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, std::int32_t first,
               std::int32_t last, Ground ground) {
    const std::int32_t left = scaling.x().source_of(0);
    const std::int32_t top = scaling.y().source_of(first);
    auto count = static_cast<std::size_t>(target.width);
    std::int32_t rows = last - first;
    const bool streaming = count * static_cast<std::size_t>(rows) * sizeof(Pixel) >= kStreamingBytes;
    if (target.width == source.width && target.width == target.pitch) {
        count *= static_cast<std::size_t>(rows);
        rows = 1;
    }
    for (std::int32_t i = 0; i < rows; ++i) {
        Pixel* to = target.row(first + i);
        const Pixel* from = source.row(top + i) + left;
        const Pixel* next = i + 1 < rows ? from + source.width : nullptr;
        switch (ground.kind) {
            case Ground::Kind::Nothing:
                copy_row(to, from, count, streaming, next);
                break;
            case Ground::Kind::Color:
                flatten_row(to, from, count, ground.color, streaming, next);
                break;
            case Ground::Kind::Target:
                blend_row(to, from, count);
                break;
        }
    }
    finish_rows(streaming && ground.kind != Ground::Kind::Target);
}

}  // namespace

Pixel plain::scaled_pixel(ConstPixelBuffer source, const Scaling& scaling, std::int32_t x, std::int32_t y) {
    const Taps& columns = scaling.x().taps(x);
    const Taps& rows = scaling.y().taps(y);
    std::uint64_t total = 0, alpha = 0, red = 0, green = 0, blue = 0;
    for (std::int32_t j = 0; j < rows.count; ++j) {
        const Pixel* row = source.row(rows.first + j) + columns.first;
        const auto rowWeight = static_cast<std::uint64_t>(scaling.y().weight(rows, j));
        for (std::int32_t i = 0; i < columns.count; ++i) {
            const std::uint64_t weight =
                rowWeight * static_cast<std::uint64_t>(scaling.x().weight(columns, i));
            const std::uint64_t visible = weight * alpha_of(row[i]);
            total += weight;
            alpha += visible;
            red += visible * red_of(row[i]);
            green += visible * green_of(row[i]);
            blue += visible * blue_of(row[i]);
        }
    }
    const std::uint32_t meanAlpha = rounded_quotient(alpha, total);
    if (meanAlpha == 0) return 0;
    return make_pixel(meanAlpha, rounded_quotient(red, alpha), rounded_quotient(green, alpha),
                      rounded_quotient(blue, alpha));
}

void plain::scale_rows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, std::int32_t first,
                       std::int32_t last, Ground ground) {
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < target.width; ++x) {
            Pixel& to = target.row(y)[x];
            to = laid_over(ground, to, scaled_pixel(source, scaling, x, y));
        }
    }
}

}  // namespace pixvane
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
#if PIXVANE_VECTORS

// A scaling under way, and what becomes of a row that is made. A row that turns out to be wrong half way is
// made anew; so it is made in a line of its own where the target still counts.
class ResultRows {
public:
    ResultRows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, Ground ground)
        : source_(source), target_(target), scaling_(scaling), ground_(ground) {
        const auto width = static_cast<std::size_t>(target.width + kLanes);
        if (needs_line()) line_ = thread_scratch<Pixel>(Scratch::ScaledLine, width);
    }
    bool is_valid() const { return !needs_line() || line_ != nullptr; }
    bool needs_line() const { return ground_.kind == Ground::Kind::Target; }

    // Where row y may be made.
    Pixel* place(std::int32_t y) const { return needs_line() ? line_ : target_.row(y); }
    void finish_opaque(std::int32_t y, const Pixel* made, bool streaming) const {
        if (made != target_.row(y)) copy_run(made, target_.row(y), count(), streaming);
    }
    void finish(std::int32_t y, const Pixel* made) const {
        if (ground_.kind == Ground::Kind::Color)
            flatten_row(target_.row(y), made, count(), ground_.color, false);
        if (ground_.kind == Ground::Kind::Target) blend_row(target_.row(y), made, count());
    }

    // A row that is not opaque, where rows are tried as opaque ones first.
    void make_other(std::int32_t y) {
        if (!scaler_) scaler_.emplace(source_, scaling_);
        if (scaler_->is_valid()) {
            scaler_->make_row(y, place(y));
            finish(y, place(y));
        } else {
            make_plain(y, y + 1);
        }
    }
    void make_plain(std::int32_t first, std::int32_t last) const {
        plain::scale_rows(source_, target_, scaling_, first, last, ground_);
    }
    // By the quickest way that can do this scaling; the last of them does all.
    void make_means(std::int32_t first, std::int32_t last) {
#if HWY_TARGET == HWY_AVX3_DL
        if (make_by<CloseScaler<CloseInBytes>>(first, last)) return;
        if (make_by<CloseScaler<CloseInFloats>>(first, last)) return;
#endif
        if (!make_by<CoarseScaler>(first, last)) make_by_sums(first, last);
    }

private:
    void make_by_sums(std::int32_t first, std::int32_t last) {
        scaler_.emplace(source_, scaling_);
        for (std::int32_t y = first; y < last; ++y) {
            if (!scaler_->is_valid()) {
                make_plain(y, y + 1);
            } else if (scaler_->make_opaque_row(y, place(y))) {
                finish_opaque(y, place(y), false);
            } else {
                make_other(y);
            }
        }
    }
    // Rows by a scaler that does opaque ones only, the others in the usual way. False if it can't do the
    // scaling.
    template <class Scaler>
    bool make_by(std::int32_t first, std::int32_t last) {
        Scaler scaler(source_, scaling_);
        if (!scaler.is_valid()) return false;
        for (std::int32_t y = first; y < last; ++y) {
            if (scaler.make_opaque_row(y, place(y))) {
                finish_opaque(y, place(y), false);
            } else {
                make_other(y);
            }
        }
        return true;
    }
    std::size_t count() const { return static_cast<std::size_t>(target_.width); }

    ConstPixelBuffer source_;
    PixelArea target_;
    const Scaling& scaling_;
    Ground ground_;
    Pixel* line_ = nullptr;
    std::optional<SumScaler> scaler_;
};

// The sums of the two source rows that are mixed at the moment; a row lies in the slot of its parity.
template <bool kShort>
class SumRows {
public:
    SumRows(ConstPixelBuffer source, const ScaleAxis& axis, WeightBits bits)
        : source_(source), axis_(axis), bits_(bits), width_((axis.count() + kLanes - 1) / kLanes * kLanes) {
        const std::size_t size = static_cast<std::size_t>(width_) * 4;
        memory_ = thread_scratch<std::int16_t>(Scratch::ScaledRows, 2 * size + 2 * size / 4);
    }
    bool is_valid() const { return memory_ != nullptr; }
    std::int32_t width() const { return width_; }

    // Begins a row, and tells whether its sums are still to be made.
    bool enter(std::int32_t y) {
        const std::size_t slot = slot_of(y);
        if (held_[slot] == y) return false;
        held_[slot] = y;
        isOpaque_[slot] = true;
        return true;
    }
    void widen(std::int32_t y, std::int32_t first, std::int32_t last) {
        const auto run = axis_.shrinks() ? widen_row<true, kShort> : widen_row<false, kShort>;
        const std::ptrdiff_t next = y + 2 < source_.height ? std::ptrdiff_t{2} * source_.width : 0;
        if (!run(source_.row(y), source_.width, axis_, bits_, first, last, next, sums_of(y)))
            isOpaque_[slot_of(y)] = false;
    }
    bool is_opaque(std::int32_t y) const { return isOpaque_[slot_of(y)]; }
    std::int16_t* sums_of(std::int32_t y) {
        return memory_ + slot_of(y) * static_cast<std::size_t>(width_) * 4;
    }
    // Room for a row of the target in whole vectors.
    Pixel* line() { return reinterpret_cast<Pixel*>(memory_ + static_cast<std::size_t>(width_) * 8); }

private:
    static std::size_t slot_of(std::int32_t y) { return static_cast<std::size_t>(y) % 2; }

    ConstPixelBuffer source_;
    const ScaleAxis& axis_;
    WeightBits bits_;
    std::int32_t width_;
    std::int32_t held_[2] = {-1, -1};
    bool isOpaque_[2] = {};
    std::int16_t* memory_ = nullptr;
};

// Whether vectors may be streamed right into the rows of a target.
bool can_stream(PixelArea target) {
    return target.width % kLanes == 0 && target.pitch % kLanes == 0 &&
           reinterpret_cast<std::uintptr_t>(target.data) % (kLanes * sizeof(Pixel)) == 0;
}

bool is_large(PixelArea target, std::int32_t first, std::int32_t last) {
    const std::size_t rowBytes = static_cast<std::size_t>(target.width) * sizeof(Pixel);
    return rowBytes * static_cast<std::size_t>(last - first) >= kStreamingBytes;
}

template <class Mix>
HWY_NOINLINE void scale_rows_bilinear(ConstPixelBuffer source, PixelArea target, const Scaling& scaling,
                                      WeightBits bits, ResultRows& result, std::int32_t first,
                                      std::int32_t last) {
    SumRows<std::is_same_v<Mix, MixShort>> rows(source, scaling.x(), bits);
    if (!rows.is_valid()) {
        result.make_plain(first, last);
        return;
    }
    const bool streaming = is_large(target, first, last);
    const bool isWhole = rows.width() == target.width;
    constexpr std::int32_t kPixels = 256;  // a multiple of every vector
    const bool direct = !result.needs_line() && (streaming ? can_stream(target) : isWhole);
    for (std::int32_t y = first; y < last; ++y) {
        const Taps& taps = scaling.y().taps(y);
        const std::int32_t upper = taps.first;
        const std::int32_t lower = taps.first + taps.count - 1;
        Pixel* to = direct ? target.row(y) : rows.line();
        const Mix mix(taps, bits);
        const bool newUpper = rows.enter(upper);
        const bool newLower = rows.enter(lower);
        // Part by part, so that pixels go out to memory while the next sums are made.
        for (std::int32_t x = 0; x < rows.width(); x += kPixels) {
            const std::int32_t end = std::min(x + kPixels, rows.width());
            if (newUpper) rows.widen(upper, x, end);
            if (newLower) rows.widen(lower, x, end);
            if (!rows.is_opaque(upper) || !rows.is_opaque(lower)) continue;
            if (streaming && direct) {
                mix_sums<true>(rows.sums_of(upper), rows.sums_of(lower), mix, to, x, end);
            } else {
                mix_sums<false>(rows.sums_of(upper), rows.sums_of(lower), mix, to, x, end);
            }
        }
        if (rows.is_opaque(upper) && rows.is_opaque(lower)) {
            result.finish_opaque(y, to, streaming);
        } else {
            result.make_other(y);
        }
    }
    hwy::FlushStream();
}

void halve(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, ResultRows& result,
           std::int32_t first, std::int32_t last) {
    const bool streaming = is_large(target, first, last);
    const bool direct = streaming && !result.needs_line() && can_stream(target);
    const std::int32_t left = scaling.x().begin();
    for (std::int32_t y = first; y < last; ++y) {
        const std::int32_t row = scaling.y().taps(y).first;
        const Pixel* upper = source.row(row) + left;
        const Pixel* lower = source.row(row + 1) + left;
        const std::ptrdiff_t next = y + 1 < last ? std::ptrdiff_t{2} * source.width : 0;
        Pixel* to = result.place(y);
        const bool isOpaque = direct ? halve_rows<true>(upper, lower, next, to, target.width)
                                     : halve_rows<false>(upper, lower, next, to, target.width);
        if (isOpaque) {
            result.finish_opaque(y, to, streaming);
        } else {
            result.make_other(y);
        }
    }
    hwy::FlushStream();
}

void scale_rows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, std::int32_t first,
                std::int32_t last, Ground ground) {
    ResultRows result(source, target, scaling, ground);
    if (!result.is_valid()) {
        result.make_plain(first, last);
    } else if (scaling.x().is_half() && scaling.y().is_half()) {
        halve(source, target, scaling, result, first, last);
    } else if (scaling.x().is_bilinear() && scaling.y().is_bilinear()) {
        const WeightBits bits(scaling.x(), scaling.y());
        const auto run = bits.is_short() ? scale_rows_bilinear<MixShort> : scale_rows_bilinear<MixLong>;
        run(source, target, scaling, bits, result, first, last);
    } else {
        result.make_means(first, last);
    }
}
#else
using plain::scale_rows;
#endif
}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane {

HWY_EXPORT(scale_rows);

double Scaling::nanoseconds_per_pixel() const {
    constexpr double kSourcePixel = 0.3;
    constexpr double kTargetPixel = 0.7;
    const double sourceRows = static_cast<double>(y_.end() - y_.begin()) / y_.count();
    return kSourcePixel * sourceRows * (x_.end() - x_.begin()) / x_.count() + kTargetPixel;
}

void scale_rows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, std::int32_t first,
                std::int32_t last, Ground ground) {
    if (scaling.is_copy()) {
        copy_rows(source, target, scaling, first, last, ground);
    } else {
        pick_kernel(plain::scale_rows, HWY_DYNAMIC_DISPATCH(scale_rows))(source, target, scaling, first, last,
                                                                         ground);
    }
}

void scale(ConstPixelBuffer source, PixelBuffer target) {
    scale_rows(source, target, Scaling(source.width, source.height, target.width, target.height), 0,
               target.height);
}

}  // namespace pixvane
#endif
