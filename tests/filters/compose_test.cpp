// Tests of fills, copies, compositions, quarter turns and flips.
// SPDX-License-Identifier: MIT
#include "core/compose.h"

#include <gtest/gtest.h>

#include <limits>

#include "filters/geometry/geometry.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

/// Source-over in whole numbers: the fraction numerator / denominator of each channel, rounded halves up.
Pixel exact_source_over(Pixel destination, Pixel source) {
    const std::int64_t s = alpha_of(source);
    const std::int64_t d = alpha_of(destination);
    if (s == 0) return destination;
    const std::int64_t alpha = 255 * s + d * (255 - s);  // of 255 * 255
    const auto rounded = [](std::int64_t numerator, std::int64_t denominator) {
        const std::int64_t floor = numerator / denominator;
        const std::int64_t rest = numerator % denominator;
        return static_cast<std::uint32_t>(floor + (2 * rest >= denominator ? 1 : 0));
    };
    const auto channel = [&](std::int64_t over, std::int64_t from) {
        return rounded(255 * s * over + d * (255 - s) * from, alpha);
    };
    return make_pixel(rounded(alpha, 255), channel(red_of(source), red_of(destination)),
                      channel(green_of(source), green_of(destination)),
                      channel(blue_of(source), blue_of(destination)));
}

TEST(SourceOver, OfHand) {
    EXPECT_EQ(source_over(0x12345678, 0x00FFFFFF), 0x12345678u);
    EXPECT_EQ(source_over(0x12345678, 0xFFABCDEF), 0xFFABCDEFu);
    EXPECT_EQ(source_over(0x00FFFFFF, 0x80102030), 0x80102030u);
    // 128 of 255 white over opaque black: 128.
    EXPECT_EQ(source_over(0xFF000000, 0x80FFFFFF), 0xFF808080u);
    // Alphas 128 and 128: 128 + 128 * 127 / 255 = 191.7; red 255 * 128 * 255 / (255 * 128 + 128 * 127).
    EXPECT_EQ(source_over(0x800000FF, 0x80FF0000), 0xC0AA0055u);
}

TEST(SourceOver, AllAlphasAreExactOnEveryInstructionSet) {
    // Every pair of alphas, under random colours.
    Picture under(256, 256);
    Picture over(256, 256);
    Picture expected(256, 256);
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        TestRandom random(7);
        for (std::int32_t repeat = 0; repeat < 20; ++repeat) {
            for (std::uint32_t i = 0; i < 65536; ++i) {
                under.pixels[i] = (random.next() & 0xFFFFFF) | (i & 255) << 24;
                over.pixels[i] = (random.next() & 0xFFFFFF) | (i >> 8) << 24;
                expected.pixels[i] = exact_source_over(under.pixels[i], over.pixels[i]);
            }
            Picture result = under;
            draw_over(result.view(), over.view(), 0, 0);
            ASSERT_TRUE(same_pixels(expected, result)) << scope.name();
        }
    }
}

TEST(SourceOver, EveryChannelValueOverOpaquePixels) {
    // All of source value and alpha, over a few values of the opaque destination.
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        for (std::uint32_t from = 0; from < 256; from += 5) {
            const Pixel background = make_pixel(255, from, 255 - from, 128);
            Picture source(256, 256);
            Picture expected(256, 256);
            for (std::uint32_t i = 0; i < 65536; ++i) {
                source.pixels[i] = make_pixel(i >> 8, i & 255, i & 255, 255 - (i & 255));
                expected.pixels[i] = exact_source_over(background, source.pixels[i]);
            }
            Picture result(256, 256);
            flatten(result.view(), source.view(), background);
            ASSERT_TRUE(same_pixels(expected, result)) << scope.name();
        }
    }
}

TEST(Compose, FillAndCopyReachEveryPixelAndNoMore) {
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        for (const auto& [width, height] : odd_sizes()) {
            const Picture source = random_picture(width, height, 2);
            // A row above and one below must stay as they are.
            Picture expected(width, height + 2, 0x11111111), result = expected;
            std::copy(source.pixels.begin(), source.pixels.end(), expected.pixels.begin() + width);
            copy(result.view().rows(1, height + 1), source.view());
            ASSERT_TRUE(same_pixels(expected, result));
            std::fill(expected.pixels.begin() + width, expected.pixels.end() - width, 0x7F123456);
            fill(result.view().rows(1, height + 1), 0x7F123456);
            ASSERT_TRUE(same_pixels(expected, result));
        }
    }
}

/// draw_over() and place() by the pixel.
Picture drawn(Picture target, const Picture& source, std::int64_t x, std::int64_t y) {
    for (const auto& [u, v] : places(target.width, target.height)) {
        if (u < x || v < y || u - x >= source.width || v - y >= source.height) continue;
        target.at(u, v) = exact_source_over(
            target.at(u, v), source.at(static_cast<std::int32_t>(u - x), static_cast<std::int32_t>(v - y)));
    }
    return target;
}

TEST(Compose, PicturesAreCutOffAtTheEdges) {
    constexpr std::int32_t kFar = std::numeric_limits<std::int32_t>::max();
    const Picture target = random_picture(40, 30, 11);
    for (const std::int64_t instructions : available_targets()) {
        const TargetScope scope(instructions);
        for (const auto& [width, height] :
             {std::pair{1, 1}, std::pair{23, 17}, std::pair{40, 30}, std::pair{90, 70}}) {
            const Picture source = random_picture(width, height, 12);
            for (const std::int32_t x : {0, 3, -3, 39, 40, -width, -width + 1, -25, kFar, -kFar - 1}) {
                for (const std::int32_t y : {0, 2, -2, 29, 30, -height, -height + 1, -20, kFar, -kFar - 1}) {
                    Picture result = target;
                    draw_over(result.view(), source.view(), x, y);
                    ASSERT_TRUE(same_pixels(drawn(target, source, x, y), result)) << x << ", " << y;
                    for (const Pixel color : {0xFF336699, 0x80336699}) {
                        place(result.view(), source.view(), x, y, color);
                        ASSERT_TRUE(same_pixels(drawn(Picture(40, 30, color), source, x, y), result))
                            << x << ", " << y;
                    }
                }
            }
        }
    }
}

Picture turned(const Picture& source, std::int32_t type) {
    const bool exchanged = type % 2 != 0;
    Picture target(exchanged ? source.height : source.width, exchanged ? source.width : source.height);
    filters::rotate_flip(source.view(), target.view(), type);
    return target;
}

// 1 2 3
// 4 5 6
TEST(RotateFlip, ThreeByTwo) {
    const Picture source(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(turned(source, 0), source);
    EXPECT_EQ(turned(source, 1), Picture(2, 3, {4, 1, 5, 2, 6, 3}));
    EXPECT_EQ(turned(source, 2), Picture(3, 2, {6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(turned(source, 3), Picture(2, 3, {3, 6, 2, 5, 1, 4}));
    EXPECT_EQ(turned(source, 4), Picture(3, 2, {3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(turned(source, 5), Picture(2, 3, {1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(turned(source, 6), Picture(3, 2, {4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(turned(source, 7), Picture(2, 3, {6, 3, 5, 2, 4, 1}));
}

TEST(RotateFlip, TurnsAndFlipsUndoEachOther) {
    for (const auto& [width, height] : odd_sizes()) {
        const Picture source = random_picture(width, height, 21);
        EXPECT_TRUE(same_pixels(source, turned(turned(source, 1), 3)));
        EXPECT_TRUE(same_pixels(source, turned(turned(source, 2), 2)));
        EXPECT_TRUE(same_pixels(turned(source, 3), turned(turned(source, 1), 2)));
        for (const std::int32_t flip : {4, 5, 6, 7})
            EXPECT_TRUE(same_pixels(source, turned(turned(source, flip), flip)));
        EXPECT_TRUE(same_pixels(turned(source, 5), turned(turned(source, 1), 4)));
        EXPECT_TRUE(same_pixels(turned(source, 7), turned(turned(source, 3), 4)));
    }
}

}  // namespace
}  // namespace pixvane::test
