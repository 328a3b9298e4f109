// Tests of the colour adjustments against values worked out by hand.
// SPDX-License-Identifier: MIT
#include "filters/adjust/adjust.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include "support/pictures.h"

namespace pixvane::test {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

using Pixels = std::vector<Pixel>;

/// What a filter makes of single pixels.
template <class... Arguments>
Pixels run(void (*filter)(ConstPixelBuffer, PixelBuffer, Arguments...), const Pixels& pixels,
           std::type_identity_t<Arguments>... arguments) {
    const Picture source(static_cast<std::int32_t>(pixels.size()), 1, pixels);
    Picture target(source.width, source.height, 0x12345678);
    filter(source.view(), target.view(), arguments...);
    return target.pixels;
}

TEST(Adjust, DesaturateTruncatesLuma) {
    // 0.7154 * 0x66 + 0.2125 * 0x33 + 0.0721 * 0x99 = 94.8393.
    EXPECT_EQ(run(filters::desaturate, {0xFF336699, 0x00FFFFFF, 0x80000000, 0xFFFF0000}),
              (Pixels{0xFF5E5E5E, 0xFFFFFFFF, 0xFF000000, 0xFF363636}));
    // Of grey 43 the sum of doubles is a little below 43.
    EXPECT_EQ(run(filters::desaturate, {0xFF2B2B2B, 0xFF2C2C2C}), (Pixels{0xFF2A2A2A, 0xFF2C2C2C}));
}

TEST(Adjust, SaturateMovesAwayFromGrey) {
    EXPECT_EQ(run(filters::saturate, {0x00336699, 0x12FFFFFF, 0x80000000}, 100),
              (Pixels{0xFF336699, 0xFFFFFFFF, 0xFF000000}));
    EXPECT_EQ(run(filters::saturate, {0xFF336699}, 0), (Pixels{0xFF5E5E5E}));
    // base = trunc(94 * -1) = -94: 102 - 94, 204 - 94, 306 - 94.
    EXPECT_EQ(run(filters::saturate, {0xFF336699}, 200), (Pixels{0xFF086ED4}));
    // base = trunc(94 * 2) = 188: 188 - 51, 188 - 102, 188 - 153.
    EXPECT_EQ(run(filters::saturate, {0xFF336699}, -100), (Pixels{0xFF895623}));
    // Half: base = 47; 47 + 25.5, 47 + 51, 47 + 76.5.
    EXPECT_EQ(run(filters::saturate, {0xFF336699}, 50), (Pixels{0xFF48627B}));
    // A base of -4767413474 doesn't fit 32 bits and becomes -2147483648, so that red, 2190433319 scaled, is
    // above it.
    EXPECT_EQ(run(filters::saturate, {0xFF66FFFF}, kLargest), (Pixels{0xFFFFFFFF}));
}

TEST(Adjust, ContrastTurnsAbout127) {
    EXPECT_EQ(run(filters::contrast, {0x00336699, 0xFF7F7F7F}, 100), (Pixels{0xFF336699, 0xFF7F7F7F}));
    // Offset -127: 102 - 127, 204 - 127, 306 - 127; 127 stays.
    EXPECT_EQ(run(filters::contrast, {0xFF336699, 0xFF7F7F7F}, 200), (Pixels{0xFF004DB3, 0xFF7F7F7F}));
    EXPECT_EQ(run(filters::contrast, {0xFF336699}, 0), (Pixels{0xFF7F7F7F}));
    // Offset 254: 254 - 51, 254 - 102, 254 - 153.
    EXPECT_EQ(run(filters::contrast, {0xFF336699}, -100), (Pixels{0xFFCB9865}));
    // trunc(0.5 * 127) = 63 is added to halves that are truncated on their own.
    EXPECT_EQ(run(filters::contrast, {0xFF330003}, 50), (Pixels{0xFF583F40}));
    // Each truncation saturates by itself: -2147483648 for the offset, 2147483647 for white.
    EXPECT_EQ(run(filters::contrast, {0xFFFF0001}, kLargest), (Pixels{0xFF000000}));
    EXPECT_EQ(run(filters::contrast, {0xFFFF0001}, kSmallest), (Pixels{0xFF00FFFF}));
}

TEST(Adjust, BrightnessAddsAndClamps) {
    EXPECT_EQ(run(filters::brightness, {0x00336699, 0xFFFFFFFF}, -300, 0, 300),
              (Pixels{0xFF0066FF, 0xFF00FFFF}));
    EXPECT_EQ(run(filters::brightness, {0xFF336699}, -50, 153, 102), (Pixels{0xFF01FFFF}));
    EXPECT_EQ(run(filters::brightness, {0xFF336699}, kLargest, kSmallest, 0), (Pixels{0xFFFF0099}));
}

TEST(Adjust, LightnessScalesEachChannel) {
    EXPECT_EQ(run(filters::lightness, {0x00336699}, 100, 0, 200), (Pixels{0xFF3300FF}));
    EXPECT_EQ(run(filters::lightness, {0xFF336401}, 50, 150, kLargest), (Pixels{0xFF1996FF}));
    // 100 * 0.29 in doubles is 28.999999999999996: percents are multiplied by 0.01.
    EXPECT_EQ(run(filters::lightness, {0xFF646464}, 29, 29, 29), (Pixels{0xFF1C1C1C}));
}

TEST(Adjust, TemperatureKeepsGreen) {
    EXPECT_EQ(run(filters::temperature, {0x00336699}, 0), (Pixels{0xFF336699}));
    EXPECT_EQ(run(filters::temperature, {0xFF336699, 0xFFC80000}, 100), (Pixels{0xFF666600, 0xFFFF0000}));
    EXPECT_EQ(run(filters::temperature, {0xFF336699}, -100), (Pixels{0xFF0066FF}));
    EXPECT_EQ(run(filters::temperature, {0xFF336699}, 50), (Pixels{0xFF4C664C}));
}

TEST(Adjust, InvertTurnsEachChannel) {
    EXPECT_EQ(run(filters::invert, {0x00336699, 0xFFFFFFFF, 0x7F000000}),
              (Pixels{0xFFCC9966, 0xFF000000, 0xFFFFFFFF}));
}

TEST(Adjust, MonochromeComparesTheMean) {
    // Means 102, and 302 / 3 = 100 with the rest cut off.
    EXPECT_EQ(run(filters::monochrome, {0xFF336699, 0x00646464, 0xFF646464 + 2}, 100, 0xFF112233, 0x00445566),
              (Pixels{0xFF112233, 0x00445566, 0x00445566}));
    EXPECT_EQ(run(filters::monochrome, {0xFF000000, 0xFFFFFFFF}, -1, 0xFF112233, 0x00445566),
              (Pixels{0xFF112233, 0xFF112233}));
    EXPECT_EQ(run(filters::monochrome, {0xFF000000, 0xFFFFFFFF}, 255, 0xFF112233, 0x00445566),
              (Pixels{0x00445566, 0x00445566}));
    EXPECT_EQ(run(filters::monochrome, {0xFFFFFFFF}, 254, 0xFF112233, 0x00445566), (Pixels{0xFF112233}));
    EXPECT_EQ(run(filters::monochrome, {0xFFFFFFFF}, kLargest, 0xFF112233, 0x00445566), (Pixels{0x00445566}));
    EXPECT_EQ(run(filters::monochrome, {0xFF000000}, kSmallest, 0xFF112233, 0x00445566),
              (Pixels{0xFF112233}));
}

TEST(Adjust, HueLeadsFromBlackOverTheColourTowardsWhite) {
    // The mean of 160, 133, 107 is 133, and 67 / 133 of the way up: 80.6, 67, 53.9; but 67 * (1 / 133) is a
    // little too small, and green falls short of 67.
    EXPECT_EQ(run(filters::hue, {0x00000000, 0xFF858585, 0xFF434343}, 160, 133, 107),
              (Pixels{0xFF000000, 0xFFA0856B, 0xFF504235}));
    // The top entry: s = 122 / 123, so 160 / 123 + 122 * 255 / 123 = 254.23, and so on.
    EXPECT_EQ(run(filters::hue, {0xFFFFFFFF}, 160, 133, 107), (Pixels{0xFFFEFEFD}));
    // Black has mean 0: only the ramp to white, 255 k / 256.
    EXPECT_EQ(run(filters::hue, {0xFF000000, 0xFF808080, 0xFFFFFFFF}, 0, 0, 0),
              (Pixels{0xFF000000, 0xFF7F7F7F, 0xFFFEFEFE}));
    EXPECT_EQ(run(filters::hue, {0xFF808080, 0xFFFFFFFF}, 255, 255, 255), (Pixels{0xFF808080, 0xFFFFFFFF}));
}

TEST(Adjust, BWLevelsKeepsWhiteAsItWas) {
    // Bands 0..84, 85..169, 170..254 to 0, 127, 255; a mean of 255 lies in none.
    EXPECT_EQ(run(filters::bw_levels,
                  {0x00000000, 0x33545454, 0x33555555, 0xFFA9A9A9, 0xFFC8C8C8, 0x00FEFEFE, 0x00FFFFFF}, 3),
              (Pixels{0xFF000000, 0xFF000000, 0xFF7F7F7F, 0xFF7F7F7F, 0xFFFFFFFF, 0xFFFFFFFF, 0x00FFFFFF}));
    EXPECT_EQ(run(filters::bw_levels, {0xFF7E7E7E, 0xFF7F7F7F, 0x80FFFFFF}, 2),
              (Pixels{0xFF000000, 0xFFFFFFFF, 0x80FFFFFF}));
    // Of 256 bands one is empty, and the greys are their numbers.
    EXPECT_EQ(run(filters::bw_levels, {0xFF000000, 0xFF010101, 0xFF808080, 0xFFFEFEFE}, 256),
              (Pixels{0xFF010101, 0xFF020202, 0xFF818181, 0xFFFFFFFF}));
}

TEST(Adjust, BWLevelsFindsTheFirstBandOfEveryMean) {
    for (std::int32_t levels = 2; levels <= 256; ++levels) {
        const filters::MeanPalette palette = filters::bw_levels_palette(levels);
        for (std::int32_t mean = 0; mean < 256; ++mean) {
            std::int32_t k = 0;
            while (k < levels && (mean < static_cast<std::int32_t>(k * (255.0 / levels)) ||
                                  mean >= static_cast<std::int32_t>((k + 1) * (255.0 / levels))))
                ++k;
            ASSERT_EQ(k < levels, mean < palette.keptFrom) << levels << " levels, mean " << mean;
            if (k == levels) continue;
            const auto grey = static_cast<std::uint32_t>(k * (255.0 / (levels - 1)));
            ASSERT_EQ(palette.pixels[static_cast<std::size_t>(mean)], make_pixel(255, grey, grey, grey))
                << levels;
        }
    }
}

TEST(Adjust, GammaFollowsThePower) {
    // 255 (51 / 255)^2 = 10.2, 255 (102 / 255)^2 = 40.8, 255 (153 / 255)^2 = 91.8.
    EXPECT_EQ(run(filters::gamma, {0x00336699}, 2.0), (Pixels{0xFF0A285B}));
    // 255 (64 / 255)^0.5 = 127.7.
    EXPECT_EQ(run(filters::gamma, {0xFF004040}, 0.5), (Pixels{0xFF007F7F}));
    EXPECT_EQ(run(filters::gamma, {0xFF000102}, 1e300), (Pixels{0xFF000000}));
}

TEST(Adjust, WorkInPlaceAndOnRowsInTheMiddle) {
    const Picture source = random_picture(37, 29, 5);
    Picture whole(37, 29);
    filters::desaturate(source.view(), whole.view());
    Picture inPlace = source;
    filters::desaturate(inPlace.view(), inPlace.view());
    EXPECT_TRUE(same_pixels(whole, inPlace));

    Picture band(37, 29, 0x0BADF00D);
    filters::desaturate(source.view().rows(3, 8), band.view().rows(3, 8));
    EXPECT_TRUE(same_pixels(
        picture_of(37, 29, [&](auto x, auto y) { return y >= 3 && y < 8 ? whole.at(x, y) : 0x0BADF00D; }),
        band));
}

}  // namespace
}  // namespace pixvane::test
