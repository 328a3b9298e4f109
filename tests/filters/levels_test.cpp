// Tests of the automatic corrections: what they take from the statistics, to the single pixel.
// SPDX-License-Identifier: MIT
#include "filters/levels.h"

#include <gtest/gtest.h>

#include "filters/adjust.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

using filters::ChannelHistograms;
using filters::ChannelTable;
using filters::ChannelTables;

/// Histograms of a picture whose channels are all alike.
ChannelHistograms equal_channels(const filters::Histogram& bins) { return {bins, bins, bins}; }

ChannelTable straight_table() {
    ChannelTable table;
    for (std::size_t i = 0; i < 256; ++i) table[i] = static_cast<std::uint8_t>(i);
    return table;
}

void autocolor(ConstPixelBuffer source, PixelBuffer target) {
    filters::apply_tables(source, target, filters::autocolor_tables(filters::channel_ranges(source)));
}

TEST(Autocolor, StretchesEachChannelTo5And250) {
    const Picture source(3, 1, {0x000A6400, 0xFF1E6401, 0xFF146403});
    Picture target(3, 1);
    autocolor(source.view(), target.view());
    // Red 10..30 by 12.25: 5, 250, 10 * 12.25 + 5 = 127.5. Blue 0..3 by 81.67: 5, 86.67, 250. Green has one
    // value and stays.
    EXPECT_EQ(target.pixels, (std::vector<Pixel>{0xFF056405, 0xFFFA6456, 0xFF7F64FA}));
}

TEST(Autocolor, LeavesASinglePixelAlone) {
    const Picture source(1, 1, 0x00336699);
    Picture target(1, 1);
    autocolor(source.view(), target.view());
    EXPECT_EQ(target.at(0, 0), 0xFF336699);
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
    for (std::int32_t i = 0; i < 256; ++i) {
        const double value = ((i - 31) * factor) * 255.0;
        const auto expected = static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
        ASSERT_EQ(tables.red[static_cast<std::size_t>(i)], expected) << i;
    }
    EXPECT_EQ(tables.red, tables.green);
    EXPECT_EQ(tables.red, tables.blue);
}

TEST(Autolevels, RedLowEndBoundsTheOtherChannels) {
    // 600 pixels of one colour, red 200, green 100, blue 50: a low end lies one above the only value, a high
    // end one below it.
    const Picture source(30, 20, 0xFFC86432);
    const ChannelTables tables = filters::autolevels_tables(filters::channel_histograms(source.view()));
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
    const Picture source(1, 1, 0x00336699);
    const ChannelTables tables = filters::autolevels_tables(filters::channel_histograms(source.view()));
    EXPECT_EQ(tables.red[1], 0);
    EXPECT_EQ(tables.red[2], static_cast<std::uint8_t>(255.0 / 254));
    EXPECT_EQ(tables.red[255], 255);
    // All white: the low end of 256 is not found, 254 at most.
    Picture white(30, 20, 0xFFFFFFFF);
    const ChannelTables flat = filters::autolevels_tables(filters::channel_histograms(white.view()));
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
    for (std::int32_t i = 0; i < 256; ++i) {
        const double value = ((i - 11) * 255.0) / (199 - 11);
        const auto expected = static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
        ASSERT_EQ(tables.red[static_cast<std::size_t>(i)], expected) << i;
    }
    EXPECT_EQ(tables.red, tables.green);
    EXPECT_EQ(tables.red, tables.blue);
}

TEST(Autocontrast, EndsOfSmallAndFlatPictures) {
    // One pixel: threshold 0, so low 0 and high 255.
    const Picture one(1, 1, 0x00336699);
    EXPECT_EQ(filters::autocontrast_tables(filters::channel_histograms(one.view())).red, straight_table());
    // All white: low 256 counts as not found, 0; high 254.
    const Picture white(30, 20, 0x00FFFFFF);
    const ChannelTables ofWhite = filters::autocontrast_tables(filters::channel_histograms(white.view()));
    EXPECT_EQ(ofWhite.red[127], static_cast<std::uint8_t>(127 * 255.0 / 254));
    EXPECT_EQ(ofWhite.red[255], 255);
    // All black: low 1, high not found, so a range of 1.
    const Picture black(30, 20, 0x00000000);
    const ChannelTables ofBlack = filters::autocontrast_tables(filters::channel_histograms(black.view()));
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

}  // namespace
}  // namespace pixvane::test
