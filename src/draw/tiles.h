// A large area in tiles, so that the mask of a shape stays small.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "draw/rasterizer.h"

namespace pixvane {

/// Calls `draw(tile)` for tiles of at most four million pixels that make up the area.
template <class Draw>
void for_each_tile(PixelRect area, Draw draw) {
    constexpr std::int32_t kPixels = 1 << 22;
    for (std::int32_t x = 0; x < area.width; x += kMaxMaskSide) {
        const std::int32_t width = std::min(kMaxMaskSide, area.width - x);
        const std::int32_t rows = std::min(kPixels / width, kMaxMaskSide);
        for (std::int32_t y = 0; y < area.height; y += rows)
            draw(PixelRect{area.x + x, area.y + y, width, std::min(rows, area.height - y)});
    }
}

}  // namespace pixvane
