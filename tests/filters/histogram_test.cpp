// Tests of the histograms.
// SPDX-License-Identifier: MIT
#include "filters/histogram.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/pictures.h"

namespace pixvane::test {
namespace {

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
