// Tests of scaling.
// SPDX-License-Identifier: MIT
#include "core/scaling/scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "core/compose.h"
#include "core/scaling/scaled_picture.h"
#include "core/streaming.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

Picture scaled(const Picture& source, std::int32_t width, std::int32_t height) {
    Picture target(width, height);
    scale(source.view(), target.view());
    return target;
}

Picture greys(std::int32_t width, std::int32_t height, std::vector<Pixel> values) {
    for (Pixel& value : values) value = kOpaque | value * 0x010101;
    return {width, height, std::move(values)};
}

TEST(Scale, to_half_takes_means) {
    EXPECT_EQ(scaled(greys(4, 2, {10, 20, 100, 101, 30, 41, 102, 100}), 2, 1), greys(2, 1, {25, 101}));
    // One pixel that covers nine.
    EXPECT_EQ(scaled(greys(3, 3, {0, 9, 18, 27, 36, 45, 54, 63, 77}), 1, 1),
              greys(1, 1, std::vector<Pixel>{37}));
}

TEST(Scale, to_twice_the_size_keeps_the_edges_and_goes_by_quarters) {
    EXPECT_EQ(scaled(greys(2, 2, {0, 100, 200, 40}), 4, 4),
              greys(4, 4,
                    {0, 25, 75, 100,    // the upper row: 0, 1/4, 3/4, 1
                     50, 59, 76, 85,    // 3/4 of it and 1/4 of the lower row
                     150, 126, 79, 55,  // 1/4 and 3/4
                     200, 160, 80, 40}));
}

TEST(Scale, covers_fractions_of_pixels_below_one_half) {
    // Each pixel covers 7 / 3 source pixels: 1 + 1 + 1/3, 2/3 + 1 + 2/3, 1/3 + 1 + 1.
    EXPECT_EQ(scaled(greys(7, 1, {30, 60, 90, 0, 255, 6, 9}), 3, 1),
              greys(3, 1,
                    {51,     // (3 * 30 + 3 * 60 + 90) / 7 = 51.4
                     99,     // (2 * 90 + 3 * 0 + 2 * 255) / 7 = 98.6
                     43}));  // (255 + 3 * 6 + 3 * 9) / 7 = 42.9
    EXPECT_EQ(scaled(greys(1, 7, {30, 60, 90, 0, 255, 6, 9}), 1, 3), greys(1, 3, {51, 99, 43}));
}

TEST(Scale, changes_from_neighbours_to_means_at_one_half) {
    // One bright pixel in 1000: no mean may miss it, while pixels between two others may.
    for (std::int32_t place = 0; place < 40; ++place) {
        Picture source(1000, 1, 0xFF000000);
        source.pixels[static_cast<std::size_t>(480 + place)] = 0xFFFFFFFF;
        for (const std::int32_t width : {499, 333, 101, 10}) {
            std::uint32_t sum = 0;
            for (const Pixel pixel : scaled(source, width, 1).pixels) sum += blue_of(pixel);
            EXPECT_NEAR(sum, 255.0 * width / 1000, 1.0) << place << " to " << width;
        }
    }
    const Picture stripes = greys(8, 1, {0, 255, 0, 255, 0, 255, 0, 255});
    EXPECT_EQ(scaled(stripes, 4, 1), greys(4, 1, {128, 128, 128, 128}));
    EXPECT_EQ(scaled(stripes, 3, 1), greys(3, 1, {96, 128, 159}));
    // To 5 they lie at 0.3, 1.9, 3.5, 5.1 and 6.7, in 256ths: 77, 486, 896, 1306, 1715.
    EXPECT_EQ(scaled(stripes, 5, 1), greys(5, 1, {77, 26, 128, 229, 178}));
}

TEST(Scale, weighs_by_alpha) {
    // Of transparent red beside opaque blue nothing shows but transparency.
    const Picture pair(2, 1, {0x00FF0000, 0xFF0000FF});
    EXPECT_EQ(scaled(pair, 1, 1), Picture(1, 1, 0x800000FF));
    EXPECT_EQ(scaled(pair, 4, 1), Picture(4, 1, {0x00000000, 0x400000FF, 0xBF0000FF, 0xFF0000FF}));
    EXPECT_EQ(scaled(Picture(3, 1, {0x00FF0000, 0x00FF0000, 0xFF0000FF}), 1, 1), Picture(1, 1, 0x550000FF));
    // (1 * 200 + 3 * 100) / 4 at alpha (64 + 192) / 2.
    EXPECT_EQ(scaled(Picture(2, 1, {0x40C8C8C8, 0xC0646464}), 1, 1), Picture(1, 1, 0x807D7D7D));
    EXPECT_EQ(scaled(Picture(9, 9, 0x00123456), 4, 13), Picture(4, 13, 0x00000000));
}

TEST(Scale, keeps_constant_colours_and_unchanged_sizes) {
    for (const Pixel colour : {0xFF010203u, 0xFFFFFFFFu, 0xFF000000u, 0x80FEDCBAu, 0x01FF8001u}) {
        for (const auto& [width, height] : odd_sizes()) {
            for (const auto& [newWidth, newHeight] :
                 {std::pair{1, 1}, std::pair{40, 3}, std::pair{2, 70}, std::pair{300, 200}}) {
                if (newWidth == width && newHeight == height) continue;
                EXPECT_EQ(scaled(Picture(width, height, colour), newWidth, newHeight),
                          Picture(newWidth, newHeight, colour));
            }
        }
    }
    const Picture source = random_picture(67, 31, 5);
    EXPECT_EQ(scaled(source, 67, 31), source);
}

TEST(Scale, of_a_line_repeats_it) {
    EXPECT_EQ(scaled(greys(1, 3, {10, 20, 30}), 3, 3), greys(3, 3, {10, 10, 10, 20, 20, 20, 30, 30, 30}));
    const Picture row = random_opaque_picture(40, 1, 3);
    for (const std::int32_t width : {7, 30, 40, 90}) {
        const Picture line = scaled(row, width, 1);
        const Picture block = scaled(row, width, 5);
        for (std::int32_t y = 0; y < 5; ++y)
            EXPECT_TRUE(same_pixels(line.view(), block.view().rows(y, y + 1)));
    }
}

TEST(Scale, computes_parts_as_they_are_in_the_whole) {
    const Picture source = random_picture(90, 70, 8);
    for (const auto& [width, height] :
         {std::pair{31, 20}, std::pair{60, 50}, std::pair{90, 70}, std::pair{200, 333}, std::pair{20, 150}}) {
        const Picture whole = scaled(source, width, height);
        Picture part(17, 9);
        scale_rows(source.view(), part.view(), {{0, 90, width, 3, 17}, {0, 70, height, height - 9, 9}}, 0, 9);
        for (std::int32_t y = 0; y < 9; ++y) {
            for (std::int32_t x = 0; x < 17; ++x)
                ASSERT_EQ(part.at(x, y), whole.at(x + 3, y + height - 9))
                    << width << " at " << x << ", " << y;
        }
    }
}

TEST(Scale, of_a_rectangle_sees_nothing_beyond_it) {
    const Picture source = random_picture(90, 70, 9);
    Picture cut(23, 19);
    for (std::int32_t y = 0; y < cut.height; ++y)
        std::copy_n(source.view().row(y + 40) + 60, cut.width, cut.view().row(y));
    for (const auto& [width, height] :
         {std::pair{7, 5}, std::pair{23, 19}, std::pair{18, 40}, std::pair{60, 4}}) {
        Picture target(width, height);
        scale_rows(source.view(), target.view(), {{60, 23, width, 0, width}, {40, 19, height, 0, height}}, 0,
                   height);
        EXPECT_TRUE(same_pixels(scaled(cut, width, height), target)) << width;
    }
}

class ScaleOnEveryInstructionSet : public ::testing::TestWithParam<std::int64_t> {};

void expect_plain_result(const Picture& source, std::int32_t width, std::int32_t height,
                         bool coarse = false) {
    Scaling memory;
    const auto drawn = [&] {
        Picture target(width, height);
        draw_scaled(target.view(), source.view(), {0, 0, width, height}, {}, memory, coarse);
        return target;
    };
    Picture expected;
    {
        const PlainScope plain;
        expected = drawn();
    }
    ASSERT_TRUE(same_pixels(expected, drawn())) << source.width << " x " << source.height << " to " << width
                                                << " x " << height << (coarse ? " coarsely" : "");
}

TEST_P(ScaleOnEveryInstructionSet, equals_the_plain_version) {
    const TargetScope scope(GetParam());
    ASSERT_STREQ(scope.name(), running_target());
    TestRandom random(17);
    const auto other_side = [&](std::int32_t side) {
        const std::uint32_t kind = random.below(8);
        if (kind == 0) return (side + 1) / 2;
        if (kind == 1) return 2 * side;
        if (kind == 2) return side;
        return static_cast<std::int32_t>(1 + random.below(static_cast<std::uint32_t>(3 * side)));
    };
    for (std::uint64_t seed = 0; seed < 600; ++seed) {
        const auto width = static_cast<std::int32_t>(1 + random.below(150));
        const auto height = static_cast<std::int32_t>(1 + random.below(40));
        Picture source = random_picture(width, height, seed);
        if (seed % 2 == 0) source = random_opaque_picture(width, height, seed);
        // Opaque but for one pixel, so that rows of both kinds meet.
        if (seed % 8 == 0)
            source.pixels[random.below(static_cast<std::uint32_t>(width * height))] &= 0x7FFFFFFF;
        expect_plain_result(source, other_side(width), other_side(height));
    }
}

TEST_P(ScaleOnEveryInstructionSet, equals_the_plain_version_where_few_neighbours_make_a_pixel) {
    const TargetScope scope(GetParam());
    for (std::int32_t width = 96; width <= 200; ++width) {
        Picture source = random_opaque_picture(400, 31, static_cast<std::uint64_t>(width));
        // Few values, so that many results lie in the middle of two.
        if (width % 2 == 0) {
            for (Pixel& p : source.pixels) p &= 0xFF010101;
        }
        if (width % 5 == 0) source.pixels[static_cast<std::size_t>(width)] = 0x80FF8040;
        for (const bool coarse : {false, true}) expect_plain_result(source, width, 3 + width % 29, coarse);
    }
}

TEST_P(ScaleOnEveryInstructionSet, equals_the_plain_version_at_the_ends_of_the_numbers) {
    const TargetScope scope(GetParam());
    // The largest sums: all white, all opaque, or all but opaque, in the longest of rows and columns.
    for (const Pixel colour : {0xFFFFFFFFu, 0xFEFFFFFFu, 0x01FFFFFFu}) {
        for (const auto& [width, height] : {std::pair{kMaxSide, 19}, std::pair{19, kMaxSide}}) {
            Picture source(width, height, colour);
            for (std::size_t i = 0; i < source.pixels.size(); i += 7) source.pixels[i] ^= 0x00010080;
            expect_plain_result(source, 1, 1);
            for (const bool coarse : {false, true})
                expect_plain_result(source, std::min(width, 37), std::min(height, 41), coarse);
            expect_plain_result(source, (width - 1) / 2, (height - 1) / 2);
        }
    }
}

TEST_P(ScaleOnEveryInstructionSet, equals_the_plain_version_when_streaming) {
    const TargetScope scope(GetParam());
    const Picture source = random_opaque_picture(512, 300, 4);
    for (const auto& [width, height] : {std::pair{1024, 600}, std::pair{1001, 560}, std::pair{1021, 140}}) {
        ASSERT_TRUE(width * height * 4 >= static_cast<std::int32_t>(kStreamingBytes) || height == 140);
        expect_plain_result(source, width, height);
    }
}

TEST_P(ScaleOnEveryInstructionSet, draws_what_can_be_seen_over_any_ground) {
    const TargetScope scope(GetParam());
    TestRandom random(23);
    const auto between = [&](std::int32_t low, std::int32_t high) {
        return low + static_cast<std::int32_t>(random.below(static_cast<std::uint32_t>(high - low + 1)));
    };
    Scaling memory;
    for (std::uint64_t seed = 0; seed < 500; ++seed) {
        Picture picture = random_picture(between(1, 120), between(1, 60), seed);
        if (seed % 3 != 0) picture = random_opaque_picture(picture.width, picture.height, seed);
        if (seed % 3 == 1)
            picture.pixels[random.below(static_cast<std::uint32_t>(picture.pixels.size()))] = 0;
        PixelRect area{between(-150, 150), between(-60, 60), between(1, 300), between(1, 120)};
        if (seed % 5 == 0) area.width = picture.width, area.height = picture.height;
        if (seed % 7 == 0) area.width = 2 * picture.width, area.height = 2 * picture.height;
        const Picture below = random_picture(between(1, 160), between(1, 60), seed + 1000);
        const bool coarse = seed % 2 == 0;
        if (coarse && seed % 4 == 0) area.width = 1 + picture.width / 3, area.height = 1 + picture.height / 4;
        Picture whole(area.width, area.height);
        {
            const PlainScope plain;
            draw_scaled(whole.view(), picture.view(), {0, 0, area.width, area.height}, {}, memory, coarse);
        }
        for (const Ground ground :
             {Ground{}, Ground{Ground::Kind::Color, 0xFF2040A0}, Ground{Ground::Kind::Target, 0}}) {
            Picture expected = below;
            for (std::int32_t y = std::max(0, area.y); y < std::min(below.height, area.y + area.height);
                 ++y) {
                for (std::int32_t x = std::max(0, area.x); x < std::min(below.width, area.x + area.width);
                     ++x) {
                    Pixel& to = expected.view().row(y)[x];
                    const Pixel pixel = whole.at(x - area.x, y - area.y);
                    to = ground.kind == Ground::Kind::Nothing ? pixel
                         : ground.kind == Ground::Kind::Color ? source_over(ground.color, pixel)
                                                              : source_over(to, pixel);
                }
            }
            Picture drawn = below;
            draw_scaled(drawn.view(), picture.view(), area, ground, memory, coarse);
            ASSERT_TRUE(same_pixels(expected, drawn)) << "seed " << seed;
        }
    }
}

TEST(Scale, is_right_to_a_level_with_coarse_weights) {
    TestRandom random(31);
    Scaling memory;
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        const auto width = static_cast<std::int32_t>(200 + random.below(600));
        // Stripes, whose means show every weight that is wrong.
        Picture source(width, 3, 0xFF000000);
        const std::uint32_t stripe = 1 + random.below(9);
        for (std::int32_t x = 0; x < width; ++x) {
            if (static_cast<std::uint32_t>(x) / stripe % 2 == 0) continue;
            for (std::int32_t y = 0; y < 3; ++y) source.view().row(y)[x] = 0xFFFFFFFF;
        }
        const auto size = static_cast<std::int32_t>(1 + random.below(static_cast<std::uint32_t>(width / 2)));
        Picture coarse(size, 1);
        draw_scaled(coarse.view(), source.view(), {0, 0, size, 1}, {}, memory, true);
        const Picture exact = scaled(source, size, 1);
        for (std::int32_t x = 0; x < size; ++x) {
            // Two borders of stripes are off by half a level at most each, and the result is rounded.
            const double borders = std::min(width / (1.0 * size * stripe) + 1, 256.0);
            ASSERT_NEAR(blue_of(coarse.at(x, 0)), blue_of(exact.at(x, 0)), borders / 2 + 1);
            ASSERT_EQ(alpha_of(coarse.at(x, 0)), 255u);
        }
    }
}

TEST(Scale, draws_nothing_where_there_is_nothing) {
    const Picture picture(3, 3, 0xFFFFFFFF);
    Scaling memory;
    for (const PixelRect area : {PixelRect{0, 0, 0, 5},
                                 {0, 0, 5, -1},
                                 {9, 0, 5, 5},
                                 {-5, 0, 5, 5},
                                 {INT32_MAX, 0, INT32_MAX, 5},
                                 {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}) {
        Picture target(9, 9, 0xFF123456);
        draw_scaled(target.view(), picture.view(), area, {}, memory);
        EXPECT_EQ(target, Picture(9, 9, 0xFF123456));
    }
    Picture target(9, 9);
    draw_scaled(target.view(), {}, {0, 0, 9, 9}, {}, memory);
    EXPECT_EQ(target, Picture(9, 9));
    // Far larger than the window, only the window's part is made.
    draw_scaled(target.view(), picture.view(), {-1000000000, -1000000000, INT32_MAX, INT32_MAX}, {}, memory);
    EXPECT_EQ(target, Picture(9, 9, 0xFFFFFFFF));
}

INSTANTIATE_TEST_SUITE_P(All, ScaleOnEveryInstructionSet, ::testing::ValuesIn(available_targets()),
                         [](const auto& info) { return std::string(hwy::TargetName(info.param)); });

}  // namespace
}  // namespace pixvane::test
