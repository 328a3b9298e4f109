// Tests of the masks of shapes and text.
// SPDX-License-Identifier: MIT
#include "draw/rasterizer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <thread>
#include <vector>

#include "draw/canvas.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

constexpr PixelRect kClip{0, 0, 64, 48};

std::uint8_t at(const Mask& mask, std::int32_t x, std::int32_t y) {
    x -= mask.area.x;
    y -= mask.area.y;
    if (x < 0 || y < 0 || x >= mask.area.width || y >= mask.area.height) return 0;
    return mask.row(y)[x];
}

bool is_within(PixelRect inner, PixelRect outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

Path box(double left, double top, double right, double bottom) {
    Path path;
    path.move_to({left, top});
    path.line_to({right, top});
    path.line_to({right, bottom});
    path.line_to({left, bottom});
    path.close();
    return path;
}

TEST(CairoRasterizer, fills_by_the_even_odd_rule_with_the_share_that_is_covered) {
    const auto rasterizer = make_cairo_rasterizer();
    Path path = box(10.5, 10, 20, 20.25);
    path.move_to({12, 12});
    path.line_to({15, 12});
    path.line_to({15, 15});
    path.close();
    const Mask mask = rasterizer->fill(path, true, kClip);
    EXPECT_NEAR(at(mask, 10, 11), 255 / 2.0, 255 / 17.0);  // half a column
    EXPECT_NEAR(at(mask, 18, 20), 255 / 4.0, 255 / 15.0);  // a quarter of a row
    EXPECT_EQ(at(mask, 14, 12), 0);                        // the hole
    EXPECT_EQ(at(mask, 12, 14), 255);
    EXPECT_EQ(at(mask, 9, 11), 0);
    EXPECT_TRUE(is_within(mask.area, kClip));
    const Mask hard = rasterizer->fill(path, false, kClip);
    for (const PixelPoint p : places(kClip.width, kClip.height))
        EXPECT_TRUE(at(hard, p.x, p.y) == 0 || at(hard, p.x, p.y) == 255) << p.x << ' ' << p.y;
}

TEST(CairoRasterizer, survives_every_number) {
    const auto rasterizer = make_cairo_rasterizer();
    const double wild[] = {0, 0.5, -3, 40, 1e5, -4e6, 1e9, -1e30, 1e300, NAN, HUGE_VAL, -1e-30};
    const PixelRect clips[] = {
        kClip, {}, {-5, -5, 1000000, 1000000}, {INT32_MAX, 3, 100, 100}, {INT32_MIN, 0, 7, 7}, {0, 0, -4, 9}};
    TestRandom random(2);
    const auto point = [&] { return DrawPoint{random.one_of(wild), random.one_of(wild)}; };
    for (int round = 0; round < 3000; ++round) {
        Path path;
        const std::function<void()> parts[] = {
            [&] { path.move_to(point()); },
            [&] { path.line_to(point()); },
            [&] { path.curve_to(point(), point(), point()); },
            [&] { path.close(); },
        };
        for (std::uint32_t n = random.below(6); n > 0; --n) random.one_of(parts)();
        const PixelRect clip = random.one_of(clips);
        const bool smooth = random.below(2) == 0;
        const Mask mask = random.below(2) == 0 ? rasterizer->fill(path, smooth, clip)
                                               : rasterizer->stroke(path, random.one_of(wild), smooth, clip);
        if (mask.is_empty()) continue;
        EXPECT_TRUE(is_within(mask.area, clip));
        EXPECT_NE(mask.coverage, nullptr);
    }
    // What can't be drawn leaves a rasterizer that can.
    EXPECT_EQ(at(rasterizer->fill(box(1, 1, 9, 9), true, kClip), 5, 5), 255);
}

std::int64_t sum_of(const Mask& mask) {
    std::int64_t total = 0;
    for (std::int32_t y = 0; y < mask.area.height; ++y)
        for (std::int32_t x = 0; x < mask.area.width; ++x) total += mask.row(y)[x];
    return total;
}

Font sans(std::int32_t size) { return {.family = "DejaVu Sans", .size = size}; }

TEST(CairoRasterizer, draws_text_within_its_measure) {
    const auto rasterizer = make_cairo_rasterizer();
    const PixelRect wide{0, 0, 400, 200};
    for (const std::int32_t size : {1, 8, 16, 48}) {
        const TextSize measure = rasterizer->measure("Pixels", sans(size));
        EXPECT_GE(measure.height, size);
        EXPECT_LE(measure.height, 2 * size + 2);
        const Mask mask = rasterizer->text("Pixels", sans(size), 20, 30, wide);
        ASSERT_FALSE(mask.is_empty());
        const PixelRect bounds{19, 30, measure.width + 2, measure.height};
        EXPECT_GT(sum_of(mask), 0);
        for (const PixelPoint p : places(wide.width, wide.height))
            EXPECT_TRUE(at(mask, p.x, p.y) == 0 || is_within({p.x, p.y, 1, 1}, bounds)) << p.x << ' ' << p.y;
    }
    const TextSize one = rasterizer->measure("one", sans(20));
    const TextSize two = rasterizer->measure("one\ntwo lines", sans(20));
    EXPECT_EQ(two.height, 2 * one.height);
    EXPECT_GT(two.width, one.width);
    Font bold = sans(20);
    bold.bold = true;
    EXPECT_GT(rasterizer->measure("one", bold).width, one.width);
    // Lines below and through the letters cover more than the letters.
    const auto sum = [&](const Font& font) { return sum_of(rasterizer->text("nnn", font, 10, 10, wide)); };
    Font underlined = sans(20), struck = sans(20);
    underlined.underline = struck.strikeout = true;
    EXPECT_GT(sum(underlined), sum(sans(20)) + 255 * 20);
    EXPECT_GT(sum(struck), sum(sans(20)) + 255 * 5);
}

TEST(CairoRasterizer, takes_any_text) {
    const auto rasterizer = make_cairo_rasterizer();
    const auto limit = std::numeric_limits<std::int32_t>::max();
    for (const std::string& text :
         {std::string(), std::string("\xFF\xC0 \0 bad", 8), std::string(100000, 'W'), std::string(9000, '\n'),
          std::string("\xE2\x82")})
        for (const std::int32_t size : {-5, 0, 1, 40, limit})
            for (const std::int32_t place : {0, -limit - 1, limit, -3000}) {
                const Mask mask =
                    rasterizer->text(text, {.family = "No such\xFF\nfamily", .size = size}, place, 0, kClip);
                EXPECT_TRUE(mask.is_empty() || is_within(mask.area, kClip));
                EXPECT_GE(rasterizer->measure(text, sans(size)).height, 1);
            }
}

TEST(CairoRasterizer, lists_families_once_and_works_in_several_threads) {
    std::vector<std::thread> threads;
    std::vector<std::int64_t> sums(4);
    std::vector<const std::string*> lists(4);
    for (std::size_t i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            const auto rasterizer = make_cairo_rasterizer();
            lists[i] = rasterizer->families().data();
            for (int round = 0; round < 10; ++round)
                sums[i] += sum_of(rasterizer->text("Threads", sans(12 + round), 3, 3, kClip));
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::count(sums.begin(), sums.end(), sums[0]), 4);
    EXPECT_EQ(std::count(lists.begin(), lists.end(), lists[0]), 4);
    const auto families = make_cairo_rasterizer()->families();
    EXPECT_TRUE(std::is_sorted(families.begin(), families.end()));
    EXPECT_NE(std::find(families.begin(), families.end(), "DejaVu Sans"), families.end());
}

}  // namespace
}  // namespace pixvane::test
