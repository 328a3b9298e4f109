// Luma in doubles. Truncation makes the order of the sum count: it differs for some dozens of colours.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

constexpr double kLumaRed = 0.2125;
constexpr double kLumaGreen = 0.7154;
constexpr double kLumaBlue = 0.0721;

/// Luma of a grey and of the luminance histogram, 0..255.
inline std::uint32_t luma_blue_last(Pixel p) {
    return static_cast<std::uint32_t>(green_of(p) * kLumaGreen + red_of(p) * kLumaRed +
                                      blue_of(p) * kLumaBlue);
}

/// Luma of the saturation, 0..255.
inline std::uint32_t luma_blue_first(Pixel p) {
    return static_cast<std::uint32_t>(blue_of(p) * kLumaBlue + red_of(p) * kLumaRed +
                                      green_of(p) * kLumaGreen);
}

}  // namespace pixvane::filters
