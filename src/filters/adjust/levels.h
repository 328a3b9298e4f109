// Corrections that stretch the channels by statistics of the whole picture.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"
#include "filters/adjust/channel_tables.h"
#include "filters/adjust/histogram.h"

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

// The tables of the automatic corrections, from the statistics of the whole picture. For a picture that is
// read in parts, the parts' statistics are added up.

/// Stretches each channel on its own to 5..250; a channel of one value stays as it is.
ChannelTables autocolor_tables(const ChannelRanges& ranges);
/// Levels of each channel from its histogram, cutting 5 percent of a third of the pixels at each end. The
/// upper end of every channel is at least the red low end plus 1.
ChannelTables autolevels_tables(const ChannelHistograms& histograms);
/// Common levels from one histogram over all three channels.
ChannelTables autocontrast_tables(const ChannelHistograms& histograms);

}  // namespace pixvane::filters
