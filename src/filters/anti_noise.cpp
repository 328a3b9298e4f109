// Outlying channels replaced by the mean around them.
// SPDX-License-Identifier: MIT
#include <cstdlib>

#include "core/kernel_path.h"
#include "filters/effects_plain.h"
#include "filters/window_histogram.h"

namespace pixvane::filters {
namespace {

struct Limits {
    double perPixel;   // of a mean
    double threshold;  // of the deviation

    explicit Limits(std::int32_t radius) {
        const double side = 2.0 * radius + 1;
        perPixel = 1.0 / (side * side);
        threshold = 1.5 * perPixel;
    }
};

std::int32_t deviation(std::uint32_t value, double mean) {
    return std::abs(static_cast<std::int32_t>(value - mean));
}

std::uint32_t quiet(std::uint32_t value, const WindowHistogram::Counts& counts, const Limits& limits) {
    std::uint64_t sum = 0;
    for (std::uint32_t v = 0; v < 256; ++v) sum += std::uint64_t{counts[v]} * v;
    const double mean = static_cast<double>(sum) * limits.perPixel;
    std::int64_t total = 0;
    for (std::uint32_t v = 0; v < 256; ++v) total += std::int64_t{counts[v]} * deviation(v, mean);
    if (total == 0) return value;
    const double part = deviation(value, mean) / static_cast<double>(total);
    return part > limits.threshold ? static_cast<std::uint32_t>(mean) : value;
}

}  // namespace

void plain::anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                       std::int32_t last) {
    const Limits limits(radius);
    for (std::int32_t y = first; y < last; ++y) {
        WindowHistogram window(source, radius, y);
        for (std::int32_t x = 0; x < source.width; ++x) {
            if (x > 0) window.move_right();
            const Pixel p = source.row(y)[x];
            target.row(y)[x] = make_pixel(0xFF, quiet(red_of(p), window.red(), limits),
                                          quiet(green_of(p), window.green(), limits),
                                          quiet(blue_of(p), window.blue(), limits));
        }
    }
}

void anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                std::int32_t last) {
    plain::anti_noise(source, target, radius, first, last);
}

}  // namespace pixvane::filters
