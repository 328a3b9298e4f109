// Tests of what brushes paint: gradients, hatches, textures.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <set>

#include "core/compose.h"
#include "draw/canvas.h"
#include "draw/hatch_patterns.h"
#include "draw/paint.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

constexpr Pixel kFirst = 0xFFF0E0D0;
constexpr Pixel kSecond = 0x80102030;

Picture filled(const BrushSettings& brush, PixelRect area, std::int32_t width, std::int32_t height,
               Pixel ground = 0) {
    Picture picture(width, height, ground);
    const auto rasterizer = make_cairo_rasterizer();
    Canvas(picture.view(), *rasterizer, false).fill_rectangle(brush, area);
    return picture;
}

BrushSettings brush_of(std::int32_t style) {
    BrushSettings brush;
    brush.style = style;
    brush.color1 = kFirst;
    brush.color2 = kSecond;
    return brush;
}

TEST(Brush, hatches_have_their_density_and_are_anchored_at_the_origin) {
    const auto density = [](std::int32_t style) { return std::popcount(hatch_pattern(style)) / 64.0; };
    const double percents[] = {5, 10, 20, 25, 30, 40, 50, 60, 70, 75, 80, 90};
    for (int i = 0; i < 12; ++i) EXPECT_NEAR(100 * density(6 + i), percents[i], 2.6);
    std::set<std::uint64_t> all;
    for (std::int32_t style = 0; style < kHatchStyles; ++style) {
        EXPECT_TRUE(all.insert(hatch_pattern(style)).second) << style;
        EXPECT_GT(density(style), 0) << style;
        EXPECT_LT(density(style), 1) << style;
        BrushSettings brush = brush_of(2);
        brush.hatchStyle = style;
        const Picture expected = picture_of(40, 30, [&](std::int32_t x, std::int32_t y) {
            const bool isLine = ((hatch_pattern(style) >> (y % 8 * 8 + x % 8)) & 1) != 0;
            return x < 3 || y < 2 || x >= 32 || y >= 22 ? 0 : isLine ? kSecond : kFirst;
        });
        ASSERT_TRUE(same_pixels(expected, filled(brush, {3, 2, 29, 20}, 40, 30))) << style;
    }
    // The order: level, upright, down to the right, up to the right, both, both.
    const auto has = [](std::int32_t style, int x, int y) {
        return (hatch_pattern(style) >> (8 * y + x)) & 1;
    };
    EXPECT_TRUE(has(0, 5, 0) && !has(0, 0, 5) && has(1, 0, 5) && !has(1, 5, 0));
    EXPECT_TRUE(has(2, 3, 3) && !has(2, 3, 4) && has(3, 3, 4) && !has(3, 3, 3));
    EXPECT_EQ(hatch_pattern(4), hatch_pattern(0) | hatch_pattern(1));
    EXPECT_EQ(hatch_pattern(5), hatch_pattern(2) | hatch_pattern(3));
}

TEST(Brush, gradients_span_the_shape_and_are_blended) {
    for (std::int32_t mode = 0; mode < 4; ++mode) {
        BrushSettings brush = brush_of(1);
        brush.gradientStyle = mode;
        const PixelRect area{-4, 3, 30, 17};
        const LinearGradient gradient{kFirst, kSecond, GradientMode{mode}, area.width, area.height};
        const Picture expected = picture_of(20, 24, [&](std::int32_t x, std::int32_t y) {
            Pixel over = 0;
            if (y >= 3 && y < 20) plain::gradient_row(gradient, x + 4, y - 3, &over, 1);
            return source_over(0x7F00FF00, over);
        });
        ASSERT_TRUE(same_pixels(expected, filled(brush, area, 20, 24, 0x7F00FF00))) << mode;
        // One wider than any picture: the same formula, seen through a window.
        brush.color2 = 0xFF102030;
        const double wide = 3e6, high = 1e6;
        const Picture part = filled(brush, {-1200000, -700000, 3000000, 1000000}, 9, 9);
        const double across = 1200004.5 / wide, down = 700004.5 / high;
        const double ways[] = {across, down, (across + down) / 2, (1 - across + down) / 2};
        EXPECT_NEAR(blue_of(part.at(4, 4)), 0xD0 + (0x30 - 0xD0) * ways[mode], 0.51) << mode;
    }
    // Beyond the rectangle its outermost colours go on.
    const BrushSettings brush = brush_of(1);
    const Paint paint(brush, {10, 10, 5, 5});
    Pixel row[20];
    paint.row(2, 30, row, 20);
    for (const int x : {0, 3, 8}) EXPECT_EQ(row[x], row[8]);
    for (const int x : {12, 15, 19}) EXPECT_EQ(row[x], row[12]);
    EXPECT_NE(row[9], row[8]);
}

TEST(Brush, textures_are_tiled_flipped_and_faded) {
    const auto texture = Bitmap::create(3, 2);
    const Pixel pixels[] = {0xFF000001, 0xFF000002, 0x80000003, 0xFF000004, 0x40000005, 0xFF000006};
    std::copy_n(pixels, 6, texture->pixels().data);
    for (std::int32_t wrap = 0; wrap < 4; ++wrap)
        for (const std::uint32_t alpha : {255u, 100u}) {
            BrushSettings brush = brush_of(3);
            brush.textureStyle = wrap;
            brush.texture = texture;
            brush.color1 = alpha << 24;
            const Picture expected = picture_of(20, 13, [&](std::int32_t x, std::int32_t y) {
                const bool flipX = (wrap & 1) != 0 && x / 3 % 2 == 1;
                const bool flipY = (wrap & 2) != 0 && y / 2 % 2 == 1;
                const Pixel from = pixels[(flipY ? 1 - y % 2 : y % 2) * 3 + (flipX ? 2 - x % 3 : x % 3)];
                const auto a = static_cast<std::uint32_t>(std::lround(alpha_of(from) * alpha / 255.0));
                return x < 2 || y < 1 ? 0 : (from & 0xFFFFFF) | a << 24;
            });
            ASSERT_TRUE(same_pixels(expected, filled(brush, {2, 1, 18, 12}, 20, 13))) << wrap;
        }
}

TEST(Brush, numbers_that_name_no_style_paint_nothing) {
    std::vector<BrushSettings> brushes(6, brush_of(4));
    brushes[1].style = -1;
    brushes[2] = brush_of(2);
    brushes[2].hatchStyle = 53;
    brushes[3] = brush_of(1);
    brushes[3].gradientStyle = 4;
    brushes[4] = brush_of(3);  // without a texture
    brushes[5] = brush_of(0);
    brushes[5].color1 &= 0xFFFFFF;
    for (const BrushSettings& brush : brushes)
        EXPECT_TRUE(same_pixels(filled(brush, {0, 0, 9, 9}, 9, 9, 0x12345678), Picture(9, 9, 0x12345678)));
}

}  // namespace
}  // namespace pixvane::test
