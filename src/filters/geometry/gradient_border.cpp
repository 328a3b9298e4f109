// Pictures placed on a gradient.
// SPDX-License-Identifier: MIT
#include "filters/geometry/gradient_border.h"

#include "core/pixel_rows.h"
#include "core/streaming.h"

namespace pixvane::filters {
namespace {

bool is_opaque(const Pixel* row, std::size_t count) {
    Pixel common = ~0u;
    for (std::size_t i = 0; i < count; ++i) common &= row[i];
    return alpha_of(common) == 255;
}

}  // namespace

void place_on_gradient_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t left, std::int32_t top,
                            const LinearGradient& gradient, std::int32_t first, std::int32_t last) {
    const auto width = static_cast<std::size_t>(target.width);
    const auto count = static_cast<std::size_t>(source.width);
    const std::int32_t right = left + source.width;
    for (std::int32_t y = first; y < last; ++y) {
        Pixel* to = target.row(y);
        if (y < top || y >= top + source.height) {
            gradient_row(gradient, 0, y, to, width);
            continue;
        }
        const Pixel* from = source.row(y - top);
        if (is_opaque(from, count)) {
            gradient_row(gradient, 0, y, to, static_cast<std::size_t>(left));
            copy_row(to + left, from, count, target.rows(first, last).bytes() >= kStreamingBytes);
            gradient_row(gradient, right, y, to + right, static_cast<std::size_t>(target.width - right));
        } else {
            gradient_row(gradient, 0, y, to, width);
            blend_row(to + left, from, count);
        }
    }
    finish_rows(true);
}

}  // namespace pixvane::filters
