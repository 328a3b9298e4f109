// Corrections that stretch the channels by statistics of the whole picture.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"
#include "filters/channel_tables.h"
#include "filters/histogram.h"

namespace pixvane::filters {

/// The smallest and the largest value of a channel; 255 and 0 for no pixels.
struct ChannelRange {
    std::uint8_t low = 255;
    std::uint8_t high = 0;
    bool operator==(const ChannelRange&) const = default;
};

struct ChannelRanges {
    ChannelRange red;
    ChannelRange green;
    ChannelRange blue;
    /// Of two parts of a picture together.
    ChannelRanges& operator+=(const ChannelRanges& other);
    bool operator==(const ChannelRanges&) const = default;
};

ChannelRanges channel_ranges(ConstPixelBuffer source);

// The tables of the corrections of the same names in filters/adjust.h, from the statistics of the whole
// picture. For a picture that is read in parts, the parts' statistics are added up.
ChannelTables autocolor_tables(const ChannelRanges& ranges);
ChannelTables autolevels_tables(const ChannelHistograms& histograms);
ChannelTables autocontrast_tables(const ChannelHistograms& histograms);

}  // namespace pixvane::filters
