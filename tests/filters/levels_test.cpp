// Tests of the histograms, and of the automatic corrections: what they take from them, to the single pixel.
// SPDX-License-Identifier: MIT
#include "filters/adjust/levels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "filters/adjust/adjust.h"
#include "filters/adjust/histogram.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

using filters::ChannelHistograms;
using filters::ChannelTable;
using filters::ChannelTables;

/// Histograms of a picture whose channels are all alike.
ChannelHistograms equal_channels(const filters::Histogram& bins) { return {bins, bins, bins}; }

template <class Value>
ChannelTable table_of(Value value) {
    ChannelTable table;
    for (int i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(std::clamp<double>(value(i), 0, 255));
    return table;
}
template <class Value>
void expect_tables(const ChannelTables& tables, Value value) {
    for (const ChannelTable& table : {tables.red, tables.green, tables.blue})
        EXPECT_EQ(table, table_of(value));
}

ChannelTables autolevels(const Picture& source) {
    return filters::autolevels_tables(filters::channel_histograms(source.view()));
}
ChannelTables autocontrast(const Picture& source) {
    return filters::autocontrast_tables(filters::channel_histograms(source.view()));
}

TEST(Autocolor, StretchesEachChannelTo5And250) {
    // Red 10..30 by 12.25: 5, 250, 10 * 12.25 + 5 = 127.5. Blue 0..3 by 81.67: 5, 86.67, 250. Green has one
    // value and stays, as all of a single pixel.
    for (const auto& [source, expected] : {std::pair{Picture(3, 1, {0x000A6400, 0xFF1E6401, 0xFF146403}),
                                                     Picture(3, 1, {0xFF056405, 0xFFFA6456, 0xFF7F64FA})},
                                           {Picture(1, 1, 0x00336699), Picture(1, 1, 0xFF336699)}}) {
        Picture target(source.width, 1);
        filters::apply_tables(source, target.view(),
                              filters::autocolor_tables(filters::channel_ranges(source)));
        EXPECT_EQ(target, expected);
    }
}

TEST(Autolevels, CutsFivePercentOfAThird) {
    // 600 pixels: the threshold is 10. Red: 9 pixels at 20 and 9 at 220 lie beyond, 1 more at 30 and at 210.
    filters::Histogram red{};
    red[20] = 9;
    red[30] = 1;
    red[31] = 290;
    red[100] = 290;
    red[210] = 1;
    red[220] = 9;
    const ChannelTables tables = filters::autolevels_tables(equal_channels(red));
    // The low end is the first value with ten pixels below it, the high end the last with ten above it.
    const double factor = 1.0 / (209 - 31);
    expect_tables(tables, [=](int i) { return ((i - 31) * factor) * 255.0; });
}

TEST(Autolevels, RedLowEndBoundsTheOtherChannels) {
    // 600 pixels of one colour, red 200, green 100, blue 50: a low end lies one above the only value, a high
    // end one below it.
    const ChannelTables tables = autolevels(Picture(30, 20, 0xFFC86432));
    // Red: low 201, range max(199, 202) - 201 = 1.
    EXPECT_EQ(tables.red[201], 0);
    EXPECT_EQ(tables.red[202], 255);
    // Green: low 101, range 202 - 101 = 101 by the low end of red.
    EXPECT_EQ(tables.green[101], 0);
    EXPECT_EQ(tables.green[151], static_cast<std::uint8_t>((50 * (1.0 / 101)) * 255.0));
    EXPECT_EQ(tables.green[202], 255);
    // Blue: low 51, range 151.
    EXPECT_EQ(tables.blue[126], static_cast<std::uint8_t>((75 * (1.0 / 151)) * 255.0));
}

TEST(Autolevels, LowEndIsNeverZeroOnceFound) {
    // One pixel: the threshold is 0, met at once, and found again at 1.
    const ChannelTables tables = autolevels(Picture(1, 1, 0x00336699));
    EXPECT_EQ(tables.red[1], 0);
    EXPECT_EQ(tables.red[2], static_cast<std::uint8_t>(255.0 / 254));
    EXPECT_EQ(tables.red[255], 255);
    // All white: the low end of 256 is not found, 254 at most.
    const ChannelTables flat = autolevels(Picture(30, 20, 0xFFFFFFFF));
    EXPECT_EQ(flat.red[0], 0);
    EXPECT_EQ(flat.red[255], 255);
}

TEST(Autocontrast, CutsAFifthOfThePixelsFromAllCounts) {
    // 100 pixels: the threshold is 20 of 300 counts. Up to 9 there are 18, up to 10 there are 21.
    filters::Histogram bins{};
    bins[9] = 6;
    bins[10] = 1;
    bins[128] = 86;
    bins[200] = 1;
    bins[240] = 6;
    const ChannelTables tables = filters::autocontrast_tables(equal_channels(bins));
    expect_tables(tables, [](int i) { return ((i - 11) * 255.0) / (199 - 11); });
}

TEST(Autocontrast, EndsOfSmallAndFlatPictures) {
    // One pixel: threshold 0, so low 0 and high 255.
    EXPECT_EQ(autocontrast(Picture(1, 1, 0x00336699)).red, table_of([](int i) { return i; }));
    // All white: low 256 counts as not found, 0; high 254.
    const ChannelTables ofWhite = autocontrast(Picture(30, 20, 0x00FFFFFF));
    EXPECT_EQ(ofWhite.red[127], static_cast<std::uint8_t>(127 * 255.0 / 254));
    EXPECT_EQ(ofWhite.red[255], 255);
    // All black: low 1, high not found, so a range of 1.
    const ChannelTables ofBlack = autocontrast(Picture(30, 20));
    EXPECT_EQ(ofBlack.red[1], 0);
    EXPECT_EQ(ofBlack.red[2], 255);
}

TEST(Autocontrast, CountsOfTheLargestPicturesDontOverflow) {
    filters::Histogram bins{};
    bins[10] = 1 << 28;
    bins[20] = 1 << 28;
    const ChannelTables tables = filters::autocontrast_tables(equal_channels(bins));
    EXPECT_EQ(tables.red[11], 0);
    EXPECT_EQ(tables.red[15], static_cast<std::uint8_t>(4 * 255.0 / 8));
    EXPECT_EQ(tables.red[19], 255);
}

TEST(Levels, StatisticsOfPartsAddUp) {
    const Picture source = random_picture(41, 33, 9);
    filters::ChannelHistograms histograms = filters::channel_histograms(source.view().rows(0, 7));
    histograms += filters::channel_histograms(source.view().rows(7, 33));
    EXPECT_EQ(histograms, filters::channel_histograms(source.view()));
    filters::ChannelRanges ranges = filters::channel_ranges(source.view().rows(0, 1));
    ranges += filters::channel_ranges(source.view().rows(1, 33));
    ranges += filters::ChannelRanges{};
    EXPECT_EQ(ranges, filters::channel_ranges(source.view()));
}

TEST(Histogram, OneColourFallsInOneBin) {
    const Picture source(10, 10, 0x00336699);
    const auto only = [](const filters::Histogram& histogram, std::size_t bin) {
        return histogram[bin] == 100 && std::accumulate(histogram.begin(), histogram.end(), 0) == 100;
    };
    EXPECT_TRUE(only(filters::channel_histogram(source.view(), filters::Channel::Red), 0x33));
    EXPECT_TRUE(only(filters::channel_histogram(source.view(), filters::Channel::Green), 0x66));
    EXPECT_TRUE(only(filters::channel_histogram(source.view(), filters::Channel::Blue), 0x99));
    EXPECT_TRUE(only(filters::luminance_histogram(source.view()), 94));
    EXPECT_TRUE(only(filters::luminance_histogram(Picture(100, 1, 0xFFFFFFFF).view()), 255));
}

TEST(Histogram, EveryPixelCountsOnceInEveryChannel) {
    const Picture source = random_picture(131, 67, 3);
    filters::ChannelHistograms expected;
    for (const Pixel p : source.pixels) {
        ++expected.red[red_of(p)];
        ++expected.green[green_of(p)];
        ++expected.blue[blue_of(p)];
    }
    EXPECT_EQ(filters::channel_histograms(source.view()), expected);
    EXPECT_EQ(filters::channel_histogram(source.view(), filters::Channel::Red), expected.red);
    EXPECT_EQ(filters::channel_histogram(source.view(), filters::Channel::Green), expected.green);
    EXPECT_EQ(filters::channel_histogram(source.view(), filters::Channel::Blue), expected.blue);
}

}  // namespace
}  // namespace pixvane::test
