// Scaling: bilinear, and by the mean of what a pixel covers where a picture shrinks below one half.
// SPDX-License-Identifier: MIT
#include "core/scaling/scale.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "core/scaling/scale.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/compose.h"
#include "core/kernel_path.h"
#include "core/pixel_rows.h"
#include "core/scaling/scale_bilinear_rows-inl.h"
#include "core/scaling/scale_close-inl.h"
#include "core/scaling/scale_coarse-inl.h"
#include "core/scaling/scale_half-inl.h"
#include "core/scaling/scale_result-inl.h"
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

// By the quickest way that can do this scaling; the last of them does all.
void make_means(ResultRows& result, std::int32_t first, std::int32_t last) {
#if HWY_TARGET == HWY_AVX3_DL
    if (result.make_by<CloseScaler<CloseInBytes>>(first, last)) return;
    if (result.make_by<CloseScaler<CloseInFloats>>(first, last)) return;
#endif
    if (!result.make_by<CoarseScaler>(first, last)) result.make_by_sums(first, last);
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
        make_means(result, first, last);
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
