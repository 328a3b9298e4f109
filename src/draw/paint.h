// What a shape is filled with, pixel by pixel.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "core/pixel_buffer.h"

namespace pixvane {

class Paint {
public:
    explicit Paint(Pixel color) : color_(color) {}

    /// Nothing at all is to be drawn.
    bool is_nothing() const { return alpha_of(color_) == 0; }
    /// The one colour of all pixels, or null.
    const Pixel* solid() const { return &color_; }
    /// `count` pixels of row y of the target, from pixel x on.
    void row(std::int32_t, std::int32_t, Pixel* to, std::size_t count) const {
        for (std::size_t i = 0; i < count; ++i) to[i] = color_;
    }

private:
    Pixel color_;
};

}  // namespace pixvane
