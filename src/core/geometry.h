// Points and rectangles; a point of the window and a point of the picture are different types.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace pixvane {

/// A pixel of the picture, origin top left; may lie outside of it.
struct ImagePoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const ImagePoint&) const = default;
};

/// A pixel of the control's client area, origin top left; may lie outside of it.
struct WindowPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const WindowPoint&) const = default;
};

/// A rectangle in window coordinates.
struct WindowRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const WindowRect&) const = default;

    bool contains(WindowPoint p) const {
        return p.x >= x && p.y >= y && std::int64_t{p.x} - x < width && std::int64_t{p.y} - y < height;
    }
    /// This and the other share a pixel.
    bool meets(const WindowRect& other) const {
        const auto overlap = [](std::int64_t a, std::int64_t length, std::int64_t b, std::int64_t other) {
            return length > 0 && other > 0 && a < b + other && b < a + length;
        };
        return overlap(x, width, other.x, other.width) && overlap(y, height, other.y, other.height);
    }
};

/// A pixel, of a picture or of a window.
struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// Whole pixels; without a positive width and height there is nothing in it.
struct PixelRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const PixelRect&) const = default;
};

}  // namespace pixvane
