// Draws a picture scaled into a rectangle of another one; only what can be seen of it is computed.
// SPDX-License-Identifier: MIT
#include "core/scaling/scaled_picture.h"

#include <algorithm>

#include "core/parallel_rows.h"

namespace pixvane {
namespace {

/// What 0..limit shows of an axis of `size` pixels that starts at `start`; of no length if nothing.
ScaledRange visible_range(std::int32_t length, std::int32_t start, std::int32_t size, std::int32_t limit,
                          bool coarse) {
    const std::int64_t first = std::max<std::int64_t>(0, -std::int64_t{start});
    const std::int64_t last = std::min<std::int64_t>(size, std::int64_t{limit} - start);
    return {0,
            length,
            size,
            static_cast<std::int32_t>(std::min<std::int64_t>(first, size)),
            static_cast<std::int32_t>(std::max<std::int64_t>(0, last - first)),
            coarse};
}

}  // namespace

void draw_scaled(PixelBuffer target, ConstPixelBuffer picture, PixelRect area, Ground ground,
                 Scaling& scaling, bool coarse) {
    if (picture.width < 1 || picture.height < 1 || area.width < 1 || area.height < 1) return;
    const ScaledRange x = visible_range(picture.width, area.x, area.width, target.width, coarse);
    const ScaledRange y = visible_range(picture.height, area.y, area.height, target.height, coarse);
    if (x.count < 1 || y.count < 1) return;
    scaling.assign(x, y);
    const PixelArea part(target, area.x + x.first, area.y + y.first, x.count, y.count);
    parallel_rows(y.count, x.count * scaling.nanoseconds_per_pixel(),
                  [&](std::int32_t first, std::int32_t last) {
                      scale_rows(picture, part, scaling, first, last, ground);
                  });
}

}  // namespace pixvane
