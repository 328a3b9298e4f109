// Tests of fills, copies and compositions.
// SPDX-License-Identifier: MIT
#include "core/compose.h"

#include <gtest/gtest.h>

#include <limits>

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
            Picture result(width, height + 2, 0x11111111);
            copy(result.view().rows(1, height + 1), source.view());
            for (std::int32_t x = 0; x < width; ++x) {
                ASSERT_EQ(result.at(x, 0), 0x11111111u);
                ASSERT_EQ(result.at(x, height + 1), 0x11111111u);
            }
            ASSERT_TRUE(same_pixels(source.view(), result.view().rows(1, height + 1)));
            fill(result.view().rows(1, height + 1), 0x7F123456);
            ASSERT_EQ(result.at(width - 1, 0), 0x11111111u);
            ASSERT_EQ(result.at(0, height + 1), 0x11111111u);
            for (const Pixel p :
                 std::vector<Pixel>(result.pixels.begin() + width, result.pixels.end() - width))
                ASSERT_EQ(p, 0x7F123456u);
        }
    }
}

/// draw_over() and place() by the pixel.
Picture drawn(Picture target, const Picture& source, std::int64_t x, std::int64_t y) {
    for (std::int32_t v = 0; v < target.height; ++v) {
        for (std::int32_t u = 0; u < target.width; ++u) {
            if (u < x || v < y || u - x >= source.width || v - y >= source.height) continue;
            Pixel& p = target.view().row(v)[u];
            p = exact_source_over(
                p, source.at(static_cast<std::int32_t>(u - x), static_cast<std::int32_t>(v - y)));
        }
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
                    place(result.view(), source.view(), x, y, 0xFF336699);
                    ASSERT_TRUE(same_pixels(drawn(Picture(40, 30, 0xFF336699), source, x, y), result))
                        << x << ", " << y;
                    place(result.view(), source.view(), x, y, 0x80336699);
                    ASSERT_TRUE(same_pixels(drawn(Picture(40, 30, 0x80336699), source, x, y), result))
                        << x << ", " << y;
                }
            }
        }
    }
}

TEST(Compose, BorderAroundAPixel) {
    const Picture source(1, 1, 0xFF123456);
    Picture target(3, 3);
    place(target.view(), source.view(), 1, 1, 0xFFFF0000);
    Picture expected(3, 3, 0xFFFF0000);
    expected.pixels[4] = 0xFF123456;
    EXPECT_EQ(target, expected);
}

}  // namespace
}  // namespace pixvane::test
