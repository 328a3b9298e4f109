// Tests over all colours that there are: truncation makes single colours go wrong.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "filters/adjust/adjust.h"
#include "filters/adjust/histogram.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

Picture all_colours() {
    Picture picture(4096, 4096);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) picture.pixels[i] = static_cast<Pixel>(i);
    return picture;
}

TEST(Luma, OfAllColoursOnEveryInstructionSet) {
    const Picture colours = all_colours();
    Picture greys(4096, 4096);
    Picture saturated(4096, 4096);
    filters::Histogram histogram{};
    for (std::size_t i = 0; i < colours.pixels.size(); ++i) {
        const Pixel p = colours.pixels[i];
        const double r = red_of(p), g = green_of(p), b = blue_of(p);
        const auto y = static_cast<std::uint32_t>(0.7154 * g + 0.2125 * r + 0.0721 * b);
        const auto other = static_cast<std::uint32_t>(0.0721 * b + 0.2125 * r + 0.7154 * g);
        greys.pixels[i] = make_pixel(255, y, y, y);
        saturated.pixels[i] = make_pixel(255, other, other, other);
        ++histogram[y];
    }
    Picture result(4096, 4096);
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        ASSERT_STREQ(scope.name(), running_target());
        filters::desaturate(colours.view(), result.view());
        EXPECT_TRUE(same_pixels(greys, result)) << scope.name();
        EXPECT_EQ(histogram, filters::luminance_histogram(colours.view())) << scope.name();
        // At 0 percent nothing is left but luma.
        filters::saturate(colours.view(), result.view(), 0);
        EXPECT_TRUE(same_pixels(saturated, result)) << scope.name();
    }
}

TEST(Saturate, EveryPercentOnEveryInstructionSet) {
    // Every value of a channel meets every luma that it can have, about.
    Picture source(256, 256);
    for (std::uint32_t i = 0; i < 65536; ++i) {
        const std::uint32_t c = i & 255;
        const std::uint32_t g = i >> 8;
        source.pixels[i] = make_pixel(0, c, g, (c * 7 + g * 13) & 255);
    }
    const auto targets = available_targets();
    Picture expected(256, 256);
    Picture result(256, 256);
    // Each that the slider has about the usual ones, and some of the others.
    for (std::int32_t percent = -410; percent <= 1010; percent += percent > -110 && percent < 210 ? 1 : 7) {
        {
            const PlainScope plain;
            filters::saturate(source.view(), expected.view(), percent);
        }
        for (const std::int64_t target : targets) {
            const TargetScope scope(target);
            filters::saturate(source.view(), result.view(), percent);
            ASSERT_TRUE(same_pixels(expected, result)) << percent << " percent, " << scope.name();
        }
    }
}

}  // namespace
}  // namespace pixvane::test
