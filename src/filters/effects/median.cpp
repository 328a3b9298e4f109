// The middle channel values around each pixel.
// SPDX-License-Identifier: MIT
#include "core/kernel_path.h"
#include "filters/effects/effects_plain.h"
#include "filters/effects/median_versions.h"
#include "filters/effects/window_histogram.h"

namespace pixvane::filters {
namespace {

/// The value at this place, 0 the first, of those counted, in order.
std::uint32_t value_at(const WindowHistogram::Counts& counts, std::uint32_t place) {
    std::uint32_t value = 0;
    for (; place >= counts[value]; ++value) place -= counts[value];
    return value;
}

}  // namespace

void plain::median(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                   std::int32_t last) {
    const auto side = static_cast<std::uint32_t>(2 * radius + 1);
    const std::uint32_t middle = side * side / 2;
    for (std::int32_t y = first; y < last; ++y) {
        WindowHistogram window(source, radius, y);
        for (std::int32_t x = 0; x < source.width; ++x) {
            if (x > 0) window.move_right();
            target.row(y)[x] = make_pixel(0xFF, value_at(window.red(), middle),
                                          value_at(window.green(), middle), value_at(window.blue(), middle));
        }
    }
}

void median(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
            std::int32_t last) {
    const bool fast = kernel_path() == KernelPath::Fast && radius > 0;
    if (fast && radius <= kLargestNetwork) {
        median_by_networks(source, target, radius, first, last);
    } else if (!fast || !median_by_histograms(source, target, radius, first, last)) {
        plain::median(source, target, radius, first, last);
    }
}

}  // namespace pixvane::filters
