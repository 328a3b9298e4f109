// Pixels scattered at random.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "filters/adjust/noise_draws.h"
#include "filters/effects/effects_plain.h"

namespace pixvane::filters {

void plain::diffuse(ConstPixelBuffer source, PixelBuffer target, std::int32_t reach,
                    const RandomGenerator& start, std::int32_t first, std::int32_t last) {
    const double scale = (2.0 * reach + 1) * kDrawUnit;
    const auto height = static_cast<std::uint64_t>(source.height);
    for (std::int32_t x = 0; x < source.width; ++x) {
        RandomGenerator random = start;
        random.jump(kDiffuseDraws *
                    (static_cast<std::uint64_t>(x) * height + static_cast<std::uint64_t>(first)));
        const auto scattered = [&](std::int32_t from, std::int32_t size) {
            const std::int64_t to = from + static_cast<std::int64_t>(random.next() * scale) - reach;
            return static_cast<std::int32_t>(std::clamp<std::int64_t>(to, 0, size - 1));
        };
        for (std::int32_t y = first; y < last; ++y) {
            const std::int32_t u = scattered(x, source.width);
            const std::int32_t v = scattered(y, source.height);
            target.row(y)[x] = source_over(source.row(y)[x], source.row(v)[u]);
        }
    }
}

namespace {

// Along the rows, which memory likes better: from one pixel to the next the generator goes down a column.
void diffuse_along_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t reach,
                        const RandomGenerator& start, std::int32_t first, std::int32_t last) {
    const double scale = (2.0 * reach + 1) * kDrawUnit;
    const std::uint64_t perColumn = kDiffuseDraws * static_cast<std::uint64_t>(source.height);
    RandomGenerator column;
    column.set_state(0);
    column.jump(perColumn);
    const std::uint32_t addend = column.state();
    column.set_state(1);
    column.jump(perColumn);
    const std::uint32_t factor = column.state() - addend;
    for (std::int32_t y = first; y < last; ++y) {
        const Pixel* from = source.row(y);
        Pixel* to = target.row(y);
        RandomGenerator atRow = start;
        atRow.jump(kDiffuseDraws * static_cast<std::uint64_t>(y));
        std::uint32_t state = atRow.state();
        for (std::int32_t x = 0; x < source.width; ++x) {
            RandomGenerator random;
            random.set_state(state);
            state = state * factor + addend;
            const auto scattered = [&](std::int32_t place, std::int32_t size) {
                const std::int64_t moved = place + static_cast<std::int64_t>(random.next() * scale) - reach;
                return static_cast<std::int32_t>(std::clamp<std::int64_t>(moved, 0, size - 1));
            };
            const std::int32_t u = scattered(x, source.width);
            const std::int32_t v = scattered(y, source.height);
            to[x] = source_over(from[x], source.row(v)[u]);
        }
    }
}

}  // namespace

void diffuse(ConstPixelBuffer source, PixelBuffer target, std::int32_t reach, const RandomGenerator& start,
             std::int32_t first, std::int32_t last) {
    pick_kernel(plain::diffuse, diffuse_along_rows)(source, target, reach, start, first, last);
}

}  // namespace pixvane::filters
