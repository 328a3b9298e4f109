// Differences to a shifted copy.
// SPDX-License-Identifier: MIT
#include "filters/area.h"
#include "filters/area_plain.h"

namespace pixvane::filters {

void plain::emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy,
                   std::int32_t first, std::int32_t last) {
    const auto half = [](std::uint32_t c, std::uint32_t other) { return (c + 255 - other) >> 1; };
    for (std::int32_t y = first; y < last; ++y) {
        const Pixel* others = source.row(inside(std::int64_t{y} + dy, source.height));
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Pixel p = source.row(y)[x];
            const Pixel other = others[inside(std::int64_t{x} + dx, source.width)];
            target.row(y)[x] =
                make_pixel(0xFF, half(red_of(p), red_of(other)), half(green_of(p), green_of(other)),
                           half(blue_of(p), blue_of(other)));
        }
    }
}

void emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy, std::int32_t first,
            std::int32_t last) {
    plain::emboss(source, target, dx, dy, first, last);
}

}  // namespace pixvane::filters
