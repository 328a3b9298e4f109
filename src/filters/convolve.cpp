// Convolution with small kernels.
// SPDX-License-Identifier: MIT
#include "core/integer_math.h"
#include "filters/area.h"
#include "filters/area_plain.h"

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

void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last) {
    plain::convolve(source, target, kernel, first, last);
}

}  // namespace pixvane::filters
