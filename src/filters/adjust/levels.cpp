// Corrections that stretch the channels by statistics of the whole picture.
// SPDX-License-Identifier: MIT
#include "filters/adjust/levels.h"

#include <algorithm>
#include <numeric>

#include "core/integer_math.h"
#include "filters/adjust/adjust.h"

namespace pixvane::filters {
namespace {

/// Bins that may hold the counts of three channels together.
using Bins = std::array<std::int64_t, 256>;

struct Ends {
    std::int32_t low = 0;
    std::int32_t high = 0;
};

// The black and the white end must leave room between them.
constexpr std::int32_t kLargestLow = 254;

/// The first values from below and from above that `threshold` pixels lie beyond. Zero means not yet found:
/// a low end found at 0 is found again at 1, and never stays 0 once it is found.
Ends ends_of_levels(const Histogram& bins, std::int64_t threshold) {
    Ends ends;
    std::int64_t sum = 0;
    for (std::int32_t i = 0; i < 256; ++i) {
        if (ends.low == 0 && sum >= threshold) ends.low = i;
        sum += bins[static_cast<std::size_t>(i)];
    }
    sum = 0;
    for (std::int32_t i = 255; i >= 0; --i) {
        if (ends.high == 0 && sum >= threshold) ends.high = i;
        sum += bins[static_cast<std::size_t>(i)];
    }
    ends.low = std::min(ends.low, kLargestLow);
    return ends;
}

/// The upper limit is at least the low end of red plus 1, for every channel.
ChannelTable levels_table(const Ends& ends, std::int32_t redLow) {
    const double range = std::max(1, std::max(ends.high, redLow + 1) - ends.low);
    const double factor = 1.0 / range;
    ChannelTable table;
    for (std::int32_t i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = clamp_to_byte(trunc_to_int32(((i - ends.low) * factor) * 255.0));
    return table;
}

/// As ends_of_levels(), but a value found at 0 counts, and one not found is 0.
Ends ends_of_contrast(const Bins& bins, std::int64_t threshold) {
    Ends ends;
    std::int64_t sum = 0;
    std::int32_t i = 0;
    for (; i < 256 && sum < threshold; ++i) sum += bins[static_cast<std::size_t>(i)];
    ends.low = std::min(i == 256 ? 0 : i, kLargestLow);
    sum = 0;
    for (i = 255; i >= 0 && sum < threshold; --i) sum += bins[static_cast<std::size_t>(i)];
    ends.high = std::max(i, 0);
    return ends;
}

ChannelTable autocolor_table(const ChannelRange& range) {
    ChannelTable table;
    std::iota(table.begin(), table.end(), std::uint8_t{0});
    if (range.low >= range.high) return table;
    const double factor = 245.0 / (range.high - range.low);
    for (std::int32_t i = range.low; i <= range.high; ++i)
        table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>((i - range.low) * factor + 5.0);
    return table;
}

}  // namespace

ChannelTables autocolor_tables(const ChannelRanges& ranges) {
    return {autocolor_table(ranges.red), autocolor_table(ranges.green), autocolor_table(ranges.blue)};
}

ChannelTables autolevels_tables(const ChannelHistograms& histograms) {
    const std::int64_t pixels =
        std::accumulate(histograms.red.begin(), histograms.red.end(), std::int64_t{0});
    // Of a third of the pixels, though each channel has all of them in its histogram.
    const std::int64_t threshold = mul_div(pixels / 3, 5, 100);
    const Ends red = ends_of_levels(histograms.red, threshold);
    const Ends green = ends_of_levels(histograms.green, threshold);
    const Ends blue = ends_of_levels(histograms.blue, threshold);
    return {levels_table(red, red.low), levels_table(green, red.low), levels_table(blue, red.low)};
}

ChannelTables autocontrast_tables(const ChannelHistograms& histograms) {
    Bins bins;
    std::int64_t pixels = 0;
    for (std::size_t i = 0; i < bins.size(); ++i) {
        bins[i] = std::int64_t{histograms.red[i]} + histograms.green[i] + histograms.blue[i];
        pixels += histograms.red[i];
    }
    // Four times the pixels, though there are three counts of each.
    const Ends ends = ends_of_contrast(bins, mul_div(pixels * 4, 5, 100));
    const std::int32_t range = std::max(ends.high, ends.low + 1) - ends.low;
    ChannelTable table;
    for (std::int32_t i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = clamp_to_byte(trunc_to_int32((i - ends.low) * 255.0 / range));
    return {table, table, table};
}

}  // namespace pixvane::filters
