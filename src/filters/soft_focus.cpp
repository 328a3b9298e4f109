// A blur that grows with the distance from a point.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "filters/effects_plain.h"
#include "filters/focus.h"

namespace pixvane::filters {
namespace {

constexpr std::uint32_t kFullWeight = 2;

// At most twice the largest transition, which fits.
std::uint32_t weight_of(const Focus& focus, std::int32_t x, std::int32_t y) {
    const double d = distance(focus, x, y);
    if (d < focus.radius) return 0;
    if (d >= full_distance(focus)) return kFullWeight;
    const double step = (focus.transition - 1.0) / focus.transition;
    return static_cast<std::uint32_t>((focus.transition - step * (d - focus.radius)) * kFullWeight);
}

// The pixel at (x, y) and its neighbours, each coordinate limited to the picture.
Pixel weighted_mean(ConstPixelBuffer source, std::int32_t x, std::int32_t y, std::uint32_t weight) {
    const std::uint64_t own = weight - std::uint64_t{1};  // the sum below counts the pixel once
    const Pixel p = source.row(y)[x];
    std::uint64_t red = own * red_of(p);
    std::uint64_t green = own * green_of(p);
    std::uint64_t blue = own * blue_of(p);
    for (std::int32_t v = y - 1; v <= y + 1; ++v) {
        const Pixel* row = source.row(std::clamp(v, 0, source.height - 1));
        for (std::int32_t u = x - 1; u <= x + 1; ++u) {
            const Pixel neighbour = row[std::clamp(u, 0, source.width - 1)];
            red += red_of(neighbour);
            green += green_of(neighbour);
            blue += blue_of(neighbour);
        }
    }
    const std::uint64_t weights = std::uint64_t{weight} + 8;
    return make_pixel(0xFF, static_cast<std::uint32_t>(red / weights),
                      static_cast<std::uint32_t>(green / weights),
                      static_cast<std::uint32_t>(blue / weights));
}

}  // namespace

void soft_focus_weights(PixelBuffer weights, const Focus& focus, std::int32_t first, std::int32_t last) {
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < weights.width; ++x) weights.row(y)[x] = weight_of(focus, x, y);
    }
}

bool plain::soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights,
                       const Focus& focus, std::int32_t first, std::int32_t last) {
    Pixel changes = 0;
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Pixel p = source.row(y)[x];
            const std::uint32_t weight = weights.data != nullptr ? weights.row(y)[x] : weight_of(focus, x, y);
            const Pixel result = weight == 0 ? source_over(p, p) : weighted_mean(source, x, y, weight);
            changes |= p ^ result;
            target.row(y)[x] = result;
        }
    }
    return changes != 0;
}

bool soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights, const Focus& focus,
                std::int32_t first, std::int32_t last) {
    return plain::soft_focus(source, target, weights, focus, first, last);
}

}  // namespace pixvane::filters
