// Square tiles of one colour.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "filters/effects_plain.h"

namespace pixvane::filters {
namespace {

// The mean of the tile around (x, y), which lies inside the picture; its top left corner does, too.
Pixel mean_of_tile(ConstPixelBuffer source, std::int32_t half, std::int32_t x, std::int32_t y) {
    // How often the window meets this place: the last of a row or column stands for those beyond it.
    const auto times = [=](std::int32_t place, std::int32_t middle, std::int32_t size) -> std::uint64_t {
        return place < size - 1 ? 1 : static_cast<std::uint64_t>(middle) + half - (size - 1) + 1;
    };
    std::uint64_t red = red_of(source.row(y)[x]);
    std::uint64_t green = green_of(source.row(y)[x]);
    std::uint64_t blue = blue_of(source.row(y)[x]);
    for (std::int32_t v = y - half; v < std::min<std::int64_t>(std::int64_t{y} + half + 1, source.height);
         ++v) {
        const Pixel* row = source.row(v);
        const std::uint64_t rowTimes = times(v, y, source.height);
        for (std::int32_t u = x - half; u < std::min<std::int64_t>(std::int64_t{x} + half + 1, source.width);
             ++u) {
            const std::uint64_t weight = rowTimes * times(u, x, source.width);
            red += weight * red_of(row[u]);
            green += weight * green_of(row[u]);
            blue += weight * blue_of(row[u]);
        }
    }
    const auto side = static_cast<std::uint64_t>(half) * 2 + 1;
    const std::uint64_t weights = side * side + 1;
    return make_pixel(0xFF, static_cast<std::uint32_t>(red / weights),
                      static_cast<std::uint32_t>(green / weights),
                      static_cast<std::uint32_t>(blue / weights));
}

}  // namespace

void plain::mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
                   std::int32_t first, std::int32_t last) {
    const std::int64_t side = std::int64_t{half} * 2 + 1;
    for (std::int64_t y0 = first - first % side; y0 < last; y0 += side) {
        for (std::int64_t x0 = 0; x0 < source.width; x0 += side) {
            const bool drawn = x0 + half < source.width && y0 + half < source.height;
            Pixel tile = 0;  // which leaves what is below it
            if (drawn) {
                const auto x = static_cast<std::int32_t>(x0 + half);
                const auto y = static_cast<std::int32_t>(y0 + half);
                tile = color == TileColor::Centre ? source.row(y)[x] : mean_of_tile(source, half, x, y);
            }
            const auto top = static_cast<std::int32_t>(std::max<std::int64_t>(y0, first));
            const auto bottom = static_cast<std::int32_t>(std::min<std::int64_t>(y0 + side, last));
            const auto right = static_cast<std::int32_t>(std::min<std::int64_t>(x0 + side, source.width));
            for (std::int32_t y = top; y < bottom; ++y) {
                for (auto x = static_cast<std::int32_t>(x0); x < right; ++x)
                    target.row(y)[x] = source_over(source.row(y)[x], tile);
            }
        }
    }
}

void mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
            std::int32_t first, std::int32_t last) {
    plain::mosaic(source, target, color, half, first, last);
}

}  // namespace pixvane::filters
