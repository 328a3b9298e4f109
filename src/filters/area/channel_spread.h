// The smallest and the largest value of each channel, for the plain versions of the filters.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

struct ChannelSpread {
    std::uint32_t low = 255;
    std::uint32_t high = 0;
    void widen(const ChannelSpread& other) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
    void widen(std::uint32_t value) { widen(ChannelSpread{value, value}); }
    std::int32_t size() const { return static_cast<std::int32_t>(high) - static_cast<std::int32_t>(low); }
};

struct PixelSpread {
    ChannelSpread blue, green, red;
    void widen(Pixel p) {
        blue.widen(blue_of(p));
        green.widen(green_of(p));
        red.widen(red_of(p));
    }
    void widen(const PixelSpread& other) {
        blue.widen(other.blue);
        green.widen(other.green);
        red.widen(other.red);
    }
    std::int32_t smallest() const { return std::min({blue.size(), green.size(), red.size()}); }
};

}  // namespace pixvane::filters
