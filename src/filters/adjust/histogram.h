// Histograms of the channels and of luminance.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// Number of pixels for each value 0..255.
using Histogram = std::array<std::int32_t, 256>;
/// `part` of the picture to what is known of others.
void add(Histogram& all, const Histogram& part);

struct ChannelHistograms {
    Histogram red{};
    Histogram green{};
    Histogram blue{};
    /// Of two parts of a picture together.
    ChannelHistograms& operator+=(const ChannelHistograms& other);
    bool operator==(const ChannelHistograms&) const = default;
};

// Alpha is not read.
ChannelHistograms channel_histograms(ConstPixelBuffer source);

enum class Channel { Red, Green, Blue };
Histogram channel_histogram(ConstPixelBuffer source, Channel channel);
/// Of trunc(0.7154 G + 0.2125 R + 0.0721 B), summed in this order in doubles.
Histogram luminance_histogram(ConstPixelBuffer source);

}  // namespace pixvane::filters
