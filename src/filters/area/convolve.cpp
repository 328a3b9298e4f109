// Convolution with small kernels.
// SPDX-License-Identifier: MIT
#include "filters/area/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/area/convolve.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/integer_math.h"
#include "core/kernel_path.h"
#include "filters/area/area_plain.h"
#include "filters/area/convolve_bytes-inl.h"
#include "filters/area/convolve_words-inl.h"

#if HWY_ONCE
namespace pixvane::filters {

Pixel weighted_pixel(const Sums<std::int64_t>& total, std::int64_t weightSum) {
    const auto channel = [=](std::int64_t sum) -> std::uint32_t {
        return clamp_to_byte(weightSum != 0 ? sum / weightSum : sum);
    };
    return make_pixel(0xFF, channel(total.red), channel(total.green), channel(total.blue));
}

void plain::convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
                     std::int32_t last) {
    const std::int32_t half = kernel.side / 2;
    std::int64_t weightSum = 0;
    for (const std::int32_t weight : kernel.weights) weightSum += weight;
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x) {
            Sums<std::int64_t> total;
            const std::int32_t* weight = kernel.weights.data();
            for (std::int32_t dx = -half; dx <= half; ++dx) {
                for (std::int32_t dy = -half; dy <= half; ++dy)
                    total.add(source.row(inside(y + dy, source.height))[inside(x + dx, source.width)],
                              *weight++);
            }
            target.row(y)[x] = weighted_pixel(total, weightSum);
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last) {
#if HWY_TARGET == HWY_AVX3_DL
    if (convolve_bytes(source, target, kernel, first, last)) return;
#endif
    Taps taps(kernel);
    const auto make = [&](const auto& how) HWY_ATTR { make_rows(source, target, taps, how, first, last); };
    if (InWords<AnyShape>(taps).serves()) {
        if (StarShape::fits(taps)) return make(InWords<StarShape>(taps));
        if (SquareShape::fits(taps)) return make(InWords<SquareShape>(taps));
        if (GradientShape::fits(taps)) return make(InWords<GradientShape>(taps));
        make(InWords<AnyShape>(taps));
    } else if (InIntegers<AnyShape>(taps).serves()) {
        if (ReliefShape::fits(taps)) return make(InIntegers<ReliefShape>(taps));
        make(InIntegers<AnyShape>(taps));
    } else {
        plain::convolve(source, target, kernel, first, last);
    }
}
#else
using plain::convolve;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(convolve);

void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last) {
    pick_kernel(plain::convolve, HWY_DYNAMIC_DISPATCH(convolve))(source, target, kernel, first, last);
}

}  // namespace pixvane::filters
#endif
