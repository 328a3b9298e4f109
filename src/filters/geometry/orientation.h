// Which pixel of the source goes where when a picture is turned or flipped.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// A turn or flip as seen from the target: its pixel (x, y) is the source's pixel (y, x) if the sides are
/// exchanged, else (x, y), where x is counted from the right edge and y from the bottom edge if so said.
struct Orientation {
    bool exchangesSides;
    bool fromRight;
    bool fromBottom;
};

/// Of the types 0..7 of rotate_flip().
constexpr Orientation orientation_of(std::int32_t type) {
    switch (type) {
        case 1:
            return {true, false, true};  // 90 degrees
        case 2:
            return {false, true, true};  // 180 degrees
        case 3:
            return {true, true, false};  // 270 degrees
        case 4:
            return {false, true, false};  // flipped
        case 5:
            return {true, false, false};  // 90 degrees, flipped
        case 6:
            return {false, false, true};  // 180 degrees, flipped
        case 7:
            return {true, true, true};  // 270 degrees, flipped
        default:
            return {false, false, false};
    }
}

/// Columns left..right and rows top..bottom.
struct Area {
    std::int32_t left;
    std::int32_t top;
    std::int32_t right;
    std::int32_t bottom;
};

/// Writes an area of the target pixel by pixel.
inline void turn_area(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn,
                      const Area& area) {
    for (std::int32_t y = area.top; y < area.bottom; ++y) {
        for (std::int32_t x = area.left; x < area.right; ++x) {
            const std::int32_t u = turn.exchangesSides ? y : x;
            const std::int32_t v = turn.exchangesSides ? x : y;
            const Pixel* row = source.row(turn.fromBottom ? source.height - 1 - v : v);
            target.row(y)[x] = row[turn.fromRight ? source.width - 1 - u : u];
        }
    }
}

}  // namespace pixvane::filters
