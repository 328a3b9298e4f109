// A weave of random strokes.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "filters/effects_plain.h"

namespace pixvane::filters {
namespace {

struct Stroke {
    std::int32_t length;  // to where the next one starts
    Pixel color;
};

Stroke draw_stroke(RandomGenerator& random, std::int32_t opacity) {
    const std::int32_t length = random.next() % 30 + 2;
    const auto alpha = static_cast<std::uint32_t>(random.next() % opacity);
    const bool white = random.next() % 2 != 0;
    return {length, (alpha << 24) + (white ? 0xFFFFFFu : 0)};
}

}  // namespace

void plain::textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity,
                    RandomGenerator& random) {
    copy(target, source);
    for (std::int32_t y = 0; y < target.height; ++y) {
        for (std::int32_t x = 0; x < target.width;) {
            const Stroke stroke = draw_stroke(random, opacity);
            for (std::int32_t i = x; i <= std::min(x + stroke.length, target.width - 1); ++i)
                target.row(y)[i] = source_over(target.row(y)[i], stroke.color);
            x += stroke.length;
        }
    }
    for (std::int32_t x = 0; x < target.width; ++x) {
        for (std::int32_t y = 0; y < target.height;) {
            const Stroke stroke = draw_stroke(random, opacity);
            for (std::int32_t i = y; i <= std::min(y + stroke.length, target.height - 1); ++i)
                target.row(i)[x] = source_over(target.row(i)[x], stroke.color);
            y += stroke.length;
        }
    }
}

void textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity, RandomGenerator& random) {
    plain::textile(source, target, opacity, random);
}

}  // namespace pixvane::filters
