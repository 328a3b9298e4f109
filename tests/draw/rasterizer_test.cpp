// Tests of the masks of shapes and text.
// SPDX-License-Identifier: MIT
#include "draw/rasterizer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
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
    for (const DrawPoint p : {DrawPoint{12, 12}, {15, 12}, {15, 15}}) {
        p == DrawPoint{12, 12} ? path.move_to(p) : path.line_to(p);
    }
    path.close();
    const Mask mask = rasterizer->fill(path, true, kClip);
    EXPECT_NEAR(at(mask, 10, 11), 255 / 2.0, 255 / 17.0);  // half a column
    EXPECT_NEAR(at(mask, 18, 20), 255 / 4.0, 255 / 15.0);  // a quarter of a row
    EXPECT_EQ(at(mask, 14, 12), 0);                        // the hole
    EXPECT_EQ(at(mask, 12, 14), 255);
    EXPECT_EQ(at(mask, 9, 11), 0);
    EXPECT_TRUE(is_within(mask.area, kClip));
    const Mask hard = rasterizer->fill(path, false, kClip);
    for (std::int32_t y = 0; y < kClip.height; ++y)
        for (std::int32_t x = 0; x < kClip.width; ++x)
            EXPECT_TRUE(at(hard, x, y) == 0 || at(hard, x, y) == 255) << x << ' ' << y;
}

TEST(CairoRasterizer, shows_the_same_through_every_clip) {
    const auto one = make_cairo_rasterizer();
    const auto other = make_cairo_rasterizer();
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(-40, 100);
    for (int round = 0; round < 200; ++round) {
        Path path;
        path.move_to({place(random), place(random)});
        path.curve_to({place(random), place(random)}, {place(random), place(random)},
                      {place(random), place(random)});
        path.line_to({place(random), place(random)});
        const bool smooth = round % 2 == 0;
        const PixelRect part{13, 7, 30, 22};
        const double width = 1 + round % 7;
        const Mask whole =
            round % 3 == 0 ? one->fill(path, smooth, kClip) : one->stroke(path, width, smooth, kClip);
        const Mask cut =
            round % 3 == 0 ? other->fill(path, smooth, part) : other->stroke(path, width, smooth, part);
        ASSERT_TRUE(is_within(cut.area, part) || cut.is_empty());
        // Where the clip cuts an edge, its rest is rounded anew: a few levels, or a pixel whose centre it
        // met.
        int most = 0;
        int pixels = 0;
        for (std::int32_t y = part.y; y < part.y + part.height; ++y)
            for (std::int32_t x = part.x; x < part.x + part.width; ++x) {
                const int difference = std::abs(at(whole, x, y) - at(cut, x, y));
                most = std::max(most, difference);
                pixels += difference != 0;
            }
        EXPECT_TRUE(smooth ? most <= 17 : pixels <= 2) << round << ": " << most << ", " << pixels;
    }
}

TEST(CairoRasterizer, survives_every_number) {
    const auto rasterizer = make_cairo_rasterizer();
    const double wild[] = {0,
                           0.5,
                           -3,
                           40,
                           1e5,
                           -4e6,
                           1e9,
                           -1e30,
                           1e300,
                           std::nan(""),
                           std::numeric_limits<double>::infinity(),
                           -1e-30};
    std::mt19937 random(2);
    const auto pick = [&] { return wild[random() % std::size(wild)]; };
    const PixelRect clips[] = {kClip,
                               {},
                               {-5, -5, 1000000, 1000000},
                               {std::numeric_limits<std::int32_t>::max(), 3, 100, 100},
                               {std::numeric_limits<std::int32_t>::min(), 0, 7, 7},
                               {0, 0, -4, 9}};
    for (int round = 0; round < 3000; ++round) {
        Path path;
        for (auto n = random() % 6; n > 0; --n) {
            switch (random() % 4) {
                case 0:
                    path.move_to({pick(), pick()});
                    break;
                case 1:
                    path.line_to({pick(), pick()});
                    break;
                case 2:
                    path.curve_to({pick(), pick()}, {pick(), pick()}, {pick(), pick()});
                    break;
                default:
                    path.close();
            }
        }
        const PixelRect clip = clips[random() % std::size(clips)];
        const bool smooth = random() % 2 == 0;
        const Mask mask = random() % 2 == 0 ? rasterizer->fill(path, smooth, clip)
                                            : rasterizer->stroke(path, pick(), smooth, clip);
        if (mask.is_empty()) continue;
        EXPECT_TRUE(is_within(mask.area, clip));
        EXPECT_NE(mask.coverage, nullptr);
    }
    // What can't be drawn leaves a rasterizer that can.
    EXPECT_EQ(at(rasterizer->fill(box(1, 1, 9, 9), true, kClip), 5, 5), 255);
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
        int covered = 0;
        for (std::int32_t y = 0; y < mask.area.height; ++y)
            for (std::int32_t x = 0; x < mask.area.width; ++x) {
                if (mask.row(y)[x] == 0) continue;
                ++covered;
                EXPECT_GE(mask.area.x + x, 20 - 1);
                EXPECT_GE(mask.area.y + y, 30);
                EXPECT_LE(mask.area.x + x, 20 + measure.width);
                EXPECT_LT(mask.area.y + y, 30 + measure.height);
            }
        EXPECT_GT(covered, 0);
    }
    const TextSize one = rasterizer->measure("one", sans(20));
    const TextSize two = rasterizer->measure("one\ntwo lines", sans(20));
    EXPECT_EQ(two.height, 2 * one.height);
    EXPECT_GT(two.width, one.width);
    Font bold = sans(20);
    bold.bold = true;
    EXPECT_GT(rasterizer->measure("one", bold).width, one.width);
    // Lines below and through the letters cover more than the letters.
    const auto sum = [&](const Font& font) {
        const Mask mask = rasterizer->text("nnn", font, 10, 10, wide);
        std::int64_t total = 0;
        for (std::int32_t y = 0; y < mask.area.height; ++y)
            for (std::int32_t x = 0; x < mask.area.width; ++x) total += mask.row(y)[x];
        return total;
    };
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
            for (int round = 0; round < 10; ++round) {
                const Mask mask = rasterizer->text("Threads", sans(12 + round), 3, 3, kClip);
                for (std::int32_t y = 0; y < mask.area.height; ++y)
                    for (std::int32_t x = 0; x < mask.area.width; ++x) sums[i] += mask.row(y)[x];
            }
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
