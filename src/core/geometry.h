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
};

}  // namespace pixvane
