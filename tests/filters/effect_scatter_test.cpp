// Tests of scattered pixels, tiles and strokes.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/compose.h"
#include "filters/effects/effects.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

using filters::TileColor;

Picture diffused(const Picture& source, std::int32_t reach, const RandomGenerator& start = {}) {
    Picture target(source.width, source.height);
    filters::diffuse(source.view(), target.view(), reach, start, 0, source.height);
    return target;
}

TEST(Diffuse, draws_down_the_columns_horizontally_first) {
    // 41, 18467, 6334, 26500, 19169, 15724, 11478, 29358 are the first numbers; with reach 1 they become
    // trunc(3 r / 32767) - 1: -1 0, -1 1, 0 0, 0 1.
    const Picture source(2, 2, {0xFF000001, 0xFF000002, 0xFF000003, 0xFF000004});
    EXPECT_EQ(diffused(source, 1), Picture(2, 2, {0xFF000001, 0xFF000002, 0xFF000003, 0xFF000004}));
    // With reach 2, trunc(5 r / 32767) - 2: -2 0, -2 2, 0 0, -1 2.
    EXPECT_EQ(diffused(source, 2), Picture(2, 2, {0xFF000001, 0xFF000002, 0xFF000003, 0xFF000003}));
}

TEST(Diffuse, blends_what_it_moves) {
    // -2 and 0: the first pixel finds itself, half transparent.
    const Picture source(1, 1, 0x80204060);
    EXPECT_EQ(diffused(source, 2).at(0, 0), source_over(0x80204060, 0x80204060));
    EXPECT_EQ(diffused(Picture(1, 1, 0x00204060), 2).at(0, 0), 0x00204060u);
}

TEST(Diffuse, goes_one_further_for_the_largest_draw) {
    // A generator whose next number is 32767 = 0x7FFF, found by going back one step from such a state.
    RandomGenerator random;
    random.set_state(0x7FFF0000);
    random.jump(0xFFFFFFFF);  // the period less one
    const RandomGenerator start = random;
    ASSERT_EQ(random.next(), 32767);
    Picture source(9, 1);
    for (std::int32_t x = 0; x < 9; ++x) source.pixels[static_cast<std::size_t>(x)] = kOpaque | (x + 1u);
    const double scale = 7 * 3.051850947599719e-5;
    const auto offset = static_cast<std::int32_t>(32767 * scale) - 3;
    EXPECT_EQ(diffused(source, 3, start).at(0, 0), kOpaque | static_cast<Pixel>(1 + offset));
}

TEST(Diffuse, moves_by_any_reach) {
    const Picture source = random_opaque_picture(31, 17, 9);
    for (const std::int32_t reach : {1, 5, 100, 0x7FFFFFFF}) {
        const Picture result = diffused(source, reach);
        const std::int32_t most = std::min(reach, 100) + 1;
        for (const PixelPoint at : places(31, 17)) {
            const auto all = places(31, 17);
            EXPECT_TRUE(std::any_of(all.begin(), all.end(),
                                    [&](PixelPoint p) {
                                        return std::max(std::abs(p.x - at.x), std::abs(p.y - at.y)) <= most &&
                                               source.at(p.x, p.y) == result.at(at.x, at.y);
                                    }))
                << reach << " at " << at.x << ", " << at.y;
        }
    }
}

Picture tiled(const Picture& source, TileColor color, std::int32_t half) {
    Picture target(source.width, source.height, 0x12345678);
    filters::mosaic(source.view(), target.view(), color, half, 0, source.height);
    return target;
}

TEST(Mosaic, covers_what_has_its_middle_inside) {
    const Picture source = random_opaque_picture(11, 11, 3);
    EXPECT_EQ(tiled(source, TileColor::Centre, 1),
              picture_of(11, 11, [&](auto x, auto y) { return source.at(x / 3 * 3 + 1, y / 3 * 3 + 1); }));
    // The tiles at 10 have their middles at 12.
    EXPECT_EQ(tiled(source, TileColor::Centre, 2), picture_of(11, 11, [&](auto x, auto y) {
                  return x == 10 || y == 10 ? source.at(x, y) : source.at(x / 5 * 5 + 2, y / 5 * 5 + 2);
              }));
}

TEST(Mosaic, counts_the_middle_twice_and_edges_as_often_as_they_are_met) {
    EXPECT_EQ(tiled(Picture(3, 3, {10, 20, 30, 40, 50, 60, 70, 80, 90}), TileColor::Mean, 1),
              Picture(3, 3, kOpaque | 50));
    // Middle 20; the right column is met twice, by row 0 and by the rows below: 3 (0 + 20 + 20) + 20 of 10.
    EXPECT_EQ(tiled(Picture(2, 2, {0x0000, 0x1400, 0x0000, 0x1400}), TileColor::Mean, 1),
              Picture(2, 2, kOpaque | 140 / 10 << 8));
}

TEST(Mosaic, blends_colors_of_middles) {
    Picture source(4, 3, 0xFF101010);
    source.pixels[5] = 0x80F00000;
    Picture expected = source;
    for (const auto& [x, y] : places(3, 3)) expected.at(x, y) = source_over(source.at(x, y), 0x80F00000);
    EXPECT_EQ(tiled(source, TileColor::Centre, 1), expected);
    source.pixels[5] = 0x00F00000;
    EXPECT_EQ(tiled(source, TileColor::Centre, 1), source);
}

TEST(Mosaic, of_any_size) {
    const Picture source = random_picture(40, 30, 3);
    for (const std::int32_t half : {30, 40, 1'000'000, 0x7FFFFFFF})
        EXPECT_EQ(tiled(source, TileColor::Centre, half), source);
    const Picture even(40, 30, 0x55336699);
    EXPECT_EQ(tiled(even, TileColor::Mean, 29), Picture(40, 30, 0xFF336699));
}

Picture woven(const Picture& source, std::int32_t opacity, RandomGenerator& random) {
    Picture target(source.width, source.height);
    filters::textile(source.view(), target.view(), opacity, random);
    return target;
}

TEST(Textile, draws_length_alpha_and_color) {
    // 41, 18467, 6334: 11 + 2 pixels on, alpha 18467 % 100 = 67, even: black; 26500, 19169, 15724 down.
    RandomGenerator random;
    const Pixel first = source_over(0xFF808080, 67u << 24);
    const Pixel second = source_over(first, static_cast<Pixel>(19169 % 100) << 24);
    EXPECT_EQ(woven(Picture(1, 1, 0xFF808080), 100, random).at(0, 0), second);
    EXPECT_EQ(random.next(), 11478);
}

TEST(Textile, paints_twice_where_strokes_meet) {
    // One row: its strokes, then one stroke down in each column.
    constexpr std::int32_t kWidth = 100;
    const Picture source(kWidth, 1, 0xFF808080);
    RandomGenerator random;
    const Picture result = woven(source, 200, random);
    RandomGenerator again;
    Picture expected = source;
    for (std::int32_t x = 0; x < kWidth;) {
        const std::int32_t next = x + again.next() % 30 + 2;
        const Pixel alpha = static_cast<Pixel>(again.next() % 200) << 24;
        const Pixel color = alpha | (again.next() % 2 != 0 ? 0xFFFFFF : 0);
        for (; x < next && x < kWidth; ++x) expected.pixels[x] = source_over(expected.pixels[x], color);
        if (x < kWidth) expected.pixels[x] = source_over(expected.pixels[x], color);
    }
    for (Pixel& p : expected.pixels) {
        again.next();
        const Pixel alpha = static_cast<Pixel>(again.next() % 200) << 24;
        p = source_over(p, alpha | (again.next() % 2 != 0 ? 0xFFFFFF : 0));
    }
    EXPECT_TRUE(same_pixels(expected, result));
    EXPECT_EQ(random.state(), again.state());
}

TEST(Textile, of_no_alpha_draws_and_changes_nothing) {
    const Picture source = random_picture(37, 21, 3);
    RandomGenerator random;
    RandomGenerator other;
    EXPECT_EQ(woven(source, 1, random), source);
    woven(source, 200, other);
    EXPECT_EQ(random.state(), other.state());
    EXPECT_NE(random.state(), RandomGenerator().state());
}

TEST(Textile, keeps_the_low_bits_of_alpha) {
    // Opaque black and white, too, come out of alphas up to 0x7FFF.
    const Picture source(60, 60, 0xFF808080);
    RandomGenerator random;
    const Picture result = woven(source, 0x7FFFFFFF, random);
    const std::set<Pixel> colors(result.pixels.begin(), result.pixels.end());
    EXPECT_GT(colors.size(), 100u);
    EXPECT_TRUE(std::all_of(colors.begin(), colors.end(), [](Pixel p) { return alpha_of(p) == 255; }));
}

}  // namespace
}  // namespace pixvane::test
