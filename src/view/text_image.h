// A line of text of the view, drawn once and kept until it changes.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/pixel_buffer.h"
#include "draw/rasterizer.h"

namespace pixvane {

/// Arial of 11 pixels, as all captions of the view are.
class TextImage {
public:
    void set(Rasterizer& rasterizer, std::string_view text, bool bold, Pixel color);
    std::int32_t width() const { return size_.width; }
    /// The text's top left corner comes to lie at (x, y).
    void draw(PixelBuffer target, std::int32_t x, std::int32_t y) const;

private:
    PixelBuffer pixels();

    std::string text_;
    bool bold_ = false;
    Pixel color_ = 0;
    TextSize size_;
    std::vector<Pixel> memory_;
};

}  // namespace pixvane
