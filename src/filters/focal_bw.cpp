// Colour around a point, grey beyond.
// SPDX-License-Identifier: MIT
#include "core/kernel_path.h"
#include "filters/effects_plain.h"
#include "filters/focus.h"
#include "filters/luma.h"

namespace pixvane::filters {

void plain::focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
                     std::int32_t last) {
    const double perPixel = focus.transition == 0 ? 0.0 : 1.0 / focus.transition;
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Pixel p = source.row(y)[x];
            const double d = distance(focus, x, y);
            const std::uint32_t luma = luma_blue_first(p) & 0xFF;
            const double part = (d - focus.radius) * perPixel;
            const auto faded = [=](std::uint32_t c) {
                const std::int32_t difference =
                    static_cast<std::int32_t>(luma) - static_cast<std::int32_t>(c);
                return static_cast<std::uint32_t>(static_cast<std::int32_t>(difference * part + c)) & 0xFF;
            };
            if (d < focus.radius) {
                target.row(y)[x] = p;
            } else if (d < full_distance(focus)) {
                target.row(y)[x] = make_pixel(0xFF, faded(red_of(p)), faded(green_of(p)), faded(blue_of(p)));
            } else {
                target.row(y)[x] = make_pixel(0xFF, luma, luma, luma);
            }
        }
    }
}

void focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
              std::int32_t last) {
    plain::focal_bw(source, target, focus, first, last);
}

}  // namespace pixvane::filters
