// Linear gradients over a rectangle.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane {

enum class GradientMode : std::int32_t {
    Horizontal,        ///< from the left to the right
    Vertical,          ///< from the top to the bottom
    ForwardDiagonal,   ///< from the top left to the bottom right corner
    BackwardDiagonal,  ///< from the top right to the bottom left corner
};

/// Runs from one colour to another over a rectangle of width x height pixels, which may be any picture's
/// size. At pixel (x, y) of it t is (x + 1/2) / width, (y + 1/2) / height, the mean of both for the forward
/// diagonal, and the mean of (width - x - 1/2) / width and (y + 1/2) / height for the backward one. Each
/// channel, alpha too, is from + (to - from) t, an exact fraction rounded once, halves up.
struct LinearGradient {
    Pixel from = 0;
    Pixel to = 0;
    GradientMode mode = GradientMode::Horizontal;
    std::int32_t width = 1;
    std::int32_t height = 1;
};

/// `count` pixels of row y, from pixel x of the rectangle on; all of them inside.
void gradient_row(const LinearGradient& gradient, std::int32_t x, std::int32_t y, Pixel* to,
                  std::size_t count);

namespace plain {
void gradient_row(const LinearGradient& gradient, std::int32_t x, std::int32_t y, Pixel* to,
                  std::size_t count);
}

}  // namespace pixvane
