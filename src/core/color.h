// Conversion between the colours of the interface (0x00BBGGRR) and stored pixels (0xAARRGGBB).
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_buffer.h"

namespace pixvane {

/// A colour as a host passes it: red in the low byte, 0x00BBGGRR. The top byte is carried, never used.
struct Color {
    std::uint32_t bgr = 0;
    bool operator==(const Color&) const = default;
};

/// The stored form of an interface colour: always opaque, the top byte ignored.
constexpr Pixel to_pixel(Color c) {
    return make_pixel(0xFF, c.bgr & 0xFF, (c.bgr >> 8) & 0xFF, (c.bgr >> 16) & 0xFF);
}

/// The interface form of a stored pixel: alpha is dropped.
constexpr Color to_color(Pixel p) { return {red_of(p) | green_of(p) << 8 | blue_of(p) << 16}; }

}  // namespace pixvane
