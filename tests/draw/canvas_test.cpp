// Tests of lines and shapes on a canvas: exact pixels, once-blended strokes, wild numbers.
// SPDX-License-Identifier: MIT
#include "draw/canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <set>

#include "core/compose.h"
#include "draw/coverage.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

constexpr Pixel kInk = 0xFF204080;
using Spots = std::set<std::pair<std::int32_t, std::int32_t>>;

class CanvasTest : public ::testing::Test {
protected:
    using Draw = std::function<void(Canvas&)>;

    Picture draw(std::int32_t width, std::int32_t height, const Draw& what, bool smooth = false,
                 Pixel ground = 0) {
        Picture picture(width, height, ground);
        Canvas canvas(picture.view(), *rasterizer_, smooth);
        what(canvas);
        return picture;
    }
    /// What must be drawn, in characters: '#' where there is ink, rows divided by '/'.
    void expect_shape(const std::string& rows, const Draw& what) {
        const auto width = rows.find('/') + 1;
        const Picture picture = draw(static_cast<std::int32_t>(width) - 1,
                                     static_cast<std::int32_t>((rows.size() + 1) / width), what);
        std::string drawn = rows;
        for (const PixelPoint p : places(picture.width, picture.height)) {
            EXPECT_TRUE(picture.at(p.x, p.y) == 0 || picture.at(p.x, p.y) == kInk);
            drawn[static_cast<std::size_t>(p.y) * width + static_cast<std::size_t>(p.x)] =
                picture.at(p.x, p.y) == kInk ? '#' : '.';
        }
        EXPECT_EQ(drawn, rows);
    }
    Spots spots(const Picture& picture) {
        Spots list;
        for (const PixelPoint p : places(picture.width, picture.height))
            if (picture.at(p.x, p.y) != 0) list.insert({p.x, p.y});
        return list;
    }
    Spots spots(std::int32_t width, std::int32_t height, const Draw& what, bool smooth = false) {
        return spots(draw(width, height, what, smooth));
    }

    std::unique_ptr<Rasterizer> rasterizer_ = make_cairo_rasterizer();
};

PenSettings pen(float width, std::int32_t style = 0, Pixel color = kInk) { return {width, style, color}; }
BrushSettings brush(Pixel color = kInk) {
    BrushSettings settings;
    settings.color1 = color;
    return settings;
}

TEST_F(CanvasTest, lines_cover_both_ends_and_are_the_same_in_both_directions) {
    expect_shape("......../.######./........", [](Canvas& c) { c.line(pen(1), {1, 1}, {6, 1}); });
    expect_shape("#...../.##.../...##./.....#", [](Canvas& c) { c.line(pen(1), {0, 0}, {5, 3}); });
    expect_shape(".../.#./...", [](Canvas& c) { c.line(pen(1), {1, 1}, {1, 1}); });
    // An even width reaches further up and left.
    expect_shape("....../.####./.####./......", [](Canvas& c) { c.line(pen(2), {2, 2}, {4, 2}); });
    expect_shape("......./.#####./.#####./.#####./.......", [](Canvas& c) {
        c.line(pen(3), {2, 2}, {4, 2});
    });
    expect_shape("###/###/###", [](Canvas& c) { c.line(pen(3), {1, 1}, {1, 1}); });
    TestRandom random(3);
    const auto place = [&] { return random.between(-10, 49); };
    for (int i = 0; i < 300; ++i) {
        const PixelPoint a{place(), place()}, b{place(), place()};
        const Picture there = draw(40, 40, [&](Canvas& c) { c.line(pen(1), a, b); });
        ASSERT_TRUE(same_pixels(there, draw(40, 40, [&](Canvas& c) { c.line(pen(1), b, a); })));
        // One pixel for each step of the longer direction, none further than half a pixel from the line.
        for (const auto& [x, y] : spots(there)) {
            const double dx = b.x - a.x, dy = b.y - a.y;
            const double most = std::max(std::abs(dx), std::abs(dy));
            EXPECT_LE(std::abs(dx * (y - a.y) - dy * (x - a.x)), most / 2);
        }
    }
}

TEST_F(CanvasTest, frames_and_fills_keep_to_the_pixels_of_their_rectangle) {
    const PixelRect area{9, 8, 14, 11};
    for (const bool smooth : {false, true})
        for (const std::int32_t width : {1, 2, 3, 4, 8, 30}) {
            const PenSettings wide = pen(static_cast<float>(width));
            const Picture expected = picture_of(32, 28, [&](std::int32_t x, std::int32_t y) {
                const std::int32_t in = std::min({x - area.x, area.x + area.width - 1 - x, y - area.y,
                                                  area.y + area.height - 1 - y}) +
                                        width / 2;
                return in >= 0 && in < width ? kInk : 0;
            });
            EXPECT_TRUE(
                same_pixels(expected, draw(
                                          32, 28, [&](Canvas& c) { c.rectangle(wide, area); }, smooth)))
                << width;
        }
    expect_shape("...../.###./...../.....", [](Canvas& c) { c.rectangle(pen(1), {1, 1, 3, 1}); });
    expect_shape(".##./.##./....", [](Canvas& c) { c.fill_rectangle(brush(), {1, -5, 2, 7}); });
    // A polygon's inside: up to its left and upper edges, as a rectangle whose points are one further.
    const PixelPoint corners[] = {{1, 1}, {5, 1}, {5, 4}, {1, 4}};
    expect_shape("......./.####../.####../.####../.......",
                 [&](Canvas& c) { c.fill_polygon(brush(), corners); });
    expect_shape("......./.#####./.#...#./.#...#./.#####./.......",
                 [&](Canvas& c) { c.polygon(pen(1), corners); });
}

TEST_F(CanvasTest, ellipses_are_even_and_reach_their_bounds) {
    for (std::int32_t width = 1; width <= 40; ++width)
        for (const std::int32_t height : {1, 2, 3, 4, 7, 10, 16, 31, 40}) {
            SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
            const PixelRect bounds{1, 1, width, height};
            const Spots thin = spots(42, 42, [&](Canvas& c) { c.ellipse(pen(1), bounds); });
            const Spots full = spots(42, 42, [&](Canvas& c) { c.fill_ellipse(brush(), bounds); });
            std::int32_t right = 0, bottom = 0;
            int lopsided = 0;
            for (const auto& [x, y] : thin) {
                right = std::max(right, x);
                bottom = std::max(bottom, y);
                lopsided += !thin.contains({width + 1 - x, y}) || !thin.contains({x, height + 1 - y});
            }
            EXPECT_EQ(lopsided, 0);
            EXPECT_EQ(right, width);
            EXPECT_EQ(bottom, height);
            // Filled is each pixel whose centre lies inside.
            for (const PixelPoint p : places(42, 42)) {
                const double r =
                    std::hypot((p.x - 0.5 - width / 2.0) / width, (p.y - 0.5 - height / 2.0) / height);
                EXPECT_TRUE(std::abs(r - 0.5) < 0.005 || full.contains({p.x, p.y}) == (r < 0.5));
            }
        }
}

TEST_F(CanvasTest, thin_curves_are_chains_of_single_pixels_near_the_curve) {
    const PixelRect bounds{2, 3, 60, 41};
    const double rx = 29.5, ry = 20;
    const Spots list = spots(66, 50, [&](Canvas& c) { c.ellipse(pen(1), bounds); });
    for (const auto& [x, y] : list) {
        const double radius = std::hypot((x - 31.5) / rx, (y - 23) / ry);
        EXPECT_NEAR(radius, 1, 0.75 / ry) << x << ' ' << y;
        int all = 0;
        for (std::int32_t dy = -1; dy <= 1; ++dy)
            for (std::int32_t dx = -1; dx <= 1; ++dx) all += list.contains({x + dx, y + dy});
        EXPECT_EQ(all, 3) << x << ' ' << y;  // with its two neighbours
    }
}

TEST_F(CanvasTest, dashes_grow_with_the_square_of_the_width) {
    // Where the line is on, read along its middle; a pen of width w starts half of it before the first point.
    const auto runs = [&](std::int32_t width, std::int32_t style, bool smooth) {
        const PenSettings dashed = pen(static_cast<float>(width), style);
        const Picture picture = draw(
            900, 20,
            [&](Canvas& c) {
                c.line(dashed, {10, 10}, {890, 10});
            },
            smooth);
        std::vector<std::int32_t> lengths;
        std::int32_t x = 10 - width / 2;
        EXPECT_EQ(picture.at(x - 1, 10), 0u);
        while (lengths.size() < 7) {
            const std::int32_t first = x;
            while (picture.at(x, 10) == picture.at(first, 10)) ++x;
            lengths.push_back(x - first);
        }
        return lengths;
    };
    const std::vector<std::vector<std::int32_t>> patterns{
        {4, 1, 4, 1, 4, 1, 4}, {2, 1, 2, 1, 2, 1, 2}, {4, 1, 2, 1, 4, 1, 2}, {4, 1, 2, 1, 2, 1, 4}};
    for (std::int32_t style = 1; style <= 4; ++style)
        for (const std::int32_t width : {1, 3, 5}) {
            std::vector<std::int32_t> expected = patterns[static_cast<std::size_t>(style) - 1];
            for (std::int32_t& length : expected) length *= width * width;
            for (const bool smooth : {false, true})
                EXPECT_EQ(runs(width, style, smooth), expected) << style << ", " << width;
        }
    for (const std::int32_t style : {-1, 5, 99, std::numeric_limits<std::int32_t>::min()})
        expect_shape("...../...../.....", [&](Canvas& c) { c.line(pen(1, style), {0, 1}, {4, 1}); });
}

TEST_F(CanvasTest, dashes_of_long_lines_are_where_they_are_without_a_cut) {
    // A window in the middle of a long line shows what the line shows in a larger one.
    for (const float width : {1.f, 2.f, 3.f})
        for (const bool smooth : {false, true}) {
            const auto part = [&](std::int32_t shift) {
                const Draw lines = [&](Canvas& c) {
                    c.line(pen(width, 3), {100 - shift, 12}, {3000 - shift, 12});
                    c.line(pen(width, 3), {-2000000000, 5}, {1000000 - shift, 5});
                };
                return draw(64, 24, lines, smooth);
            };
            const Picture near = part(900), next = part(910);
            int lit = 0, farLit = 0;
            for (std::int32_t x = 10; x < 64; ++x) {
                EXPECT_EQ(near.at(x, 12), next.at(x - 10, 12)) << x;
                lit += near.at(x, 12) != 0;
                farLit += near.at(x, 5) != 0;
            }
            EXPECT_GT(lit, 30);
            EXPECT_GT(farLit, 20) << "far ends leave the rest of a line where it belongs";
        }
    const Picture crossed = draw(50, 50, [](Canvas& c) {
        c.line(pen(1), {-1000000, -1000000}, {1000000, 1000000});
        c.line(pen(1), {-2147483647, 25}, {2147483647, 25});
    });
    EXPECT_TRUE(same_pixels(picture_of(50, 50, [](auto x, auto y) { return x == y || y == 25 ? kInk : 0; }),
                            crossed));
}

TEST_F(CanvasTest, what_lies_outside_changes_nothing_inside) {
    // Drawn on a small target, cut to what is seen of it, and as a part of a large one.
    constexpr std::int32_t kPart = 60, kRound = 220;
    using Points = std::vector<PixelPoint>;
    using Shape = void (*)(Canvas&, const PenSettings&, PixelRect, const Points&);
    const Shape shapes[] = {
        [](Canvas& c, auto& p, auto, auto& points) { c.polygon(p, points); },
        [](Canvas& c, auto&, auto, auto& points) { c.fill_polygon(brush(), points); },
        [](Canvas& c, auto& p, auto box, auto&) { c.ellipse(p, box); },
        [](Canvas& c, auto&, auto box, auto&) { c.fill_ellipse(brush(), box); },
        [](Canvas& c, auto& p, auto box, auto&) { c.pie(p, box, 20, -140); },
        [](Canvas& c, auto& p, auto, auto& points) { c.spline(p, points, true); },
        [](Canvas& c, auto&, auto, auto& points) { c.fill_spline(brush(), points); },
        [](Canvas& c, auto& p, auto, auto& points) { c.bezier(p, points); },
    };
    TestRandom random(21);
    for (std::size_t round = 0; round < 600; ++round) {
        Points points(3 + random.below(5));
        for (PixelPoint& p : points) p = {random.between(-170, 229), random.between(-170, 229)};
        const PixelRect box{points[0].x, points[0].y, std::abs(points[1].x) + 1, std::abs(points[1].y) + 1};
        const bool smooth = round % 2 == 0;
        const PenSettings p =
            pen(static_cast<float>(1 + round % 3 * 2), static_cast<std::int32_t>(round / 3 % 5));
        const Shape shape = shapes[round / 15 % 8];
        const auto drawn = [&](std::int32_t side, std::int32_t shift) {
            Points moved = points;
            for (PixelPoint& at : moved) at = {at.x + shift, at.y + shift};
            const PixelRect area{box.x + shift, box.y + shift, box.width, box.height};
            return draw(
                side, side, [&](Canvas& c) { shape(c, p, area, moved); }, smooth);
        };
        const Picture part = drawn(kPart, 0), whole = drawn(2 * kRound, kRound);
        int differing = 0;
        for (const PixelPoint at : places(kPart, kPart)) {
            const auto a = static_cast<int>(alpha_of(part.at(at.x, at.y)));
            const auto b = static_cast<int>(alpha_of(whole.at(at.x + kRound, at.y + kRound)));
            differing += std::abs(a - b) > (smooth ? 24 : 0);
        }
        EXPECT_LE(differing, 4) << "round " << round << ", shape " << round / 15 % 8;
    }
    // Two thousand million pixels long, five wide: the part that is seen is a band of that width.
    for (const std::int32_t end : {1000, 1000000, 2000000000}) {
        const Draw line = [&](Canvas& c) { c.line(pen(5), {-end, -end}, {end, end}); };
        const Picture band = draw(40, 40, line, true);
        for (std::int32_t y = 5; y < 35; ++y) {
            double total = 0;
            for (std::int32_t x = 0; x < 40; ++x) total += alpha_of(band.at(x, y)) / 255.0;
            EXPECT_NEAR(total, 5 * std::sqrt(2.0), 0.1) << end;
            EXPECT_EQ(band.at(y, y), kInk);
        }
    }
}

TEST_F(CanvasTest, strokes_are_blended_once) {
    const Pixel ground = 0x60FFCC00, ink = 0x80204080;
    const PixelPoint knot[] = {{2, 2}, {37, 30}, {37, 2}, {2, 30}, {20, 2}, {20, 35}, {2, 2}, {37, 30}};
    for (const float width : {1.f, 4.f})
        for (const std::int32_t style : {0, 1}) {
            const Picture picture = draw(
                40, 40, [&](Canvas& c) { c.polyline(pen(width, style, ink), knot); }, false, ground);
            const Pixel once = source_over(ground, ink);
            for (const Pixel pixel : picture.pixels) ASSERT_TRUE(pixel == ground || pixel == once);
            EXPECT_GT(std::count(picture.pixels.begin(), picture.pixels.end(), once), 100);
        }
}

TEST_F(CanvasTest, partly_covered_pixels_are_blended_to_the_nearest_level) {
    TestRandom random(8);
    for (int i = 0; i < 200000; ++i) {
        const Pixel below = i % 3 == 0 ? random.next() | kOpaque : random.next();
        const Pixel above = random.next();
        const std::uint32_t coverage = i % 5 == 0 ? 255 : random.below(256);
        const Pixel got = cover(below, above, coverage);
        const double s = alpha_of(above) / 255.0 * coverage / 255.0, d = alpha_of(below) / 255.0;
        const double a = s + d * (1 - s);
        ASSERT_NEAR(alpha_of(got), 255 * a, 0.5 + 1e-9);
        ASSERT_TRUE(s != 0 || got == below);
        ASSERT_TRUE(coverage != 255 || got == source_over(below, above));
        if (a == 0) continue;
        for (const int shift : {0, 8, 16}) {
            const double over = (above >> shift) & 255, from = (below >> shift) & 255;
            ASSERT_NEAR((got >> shift) & 255, (s * over + d * (1 - s) * from) / a, 0.5 + 1e-9);
        }
    }
}

TEST_F(CanvasTest, arcs_pies_and_curves_lie_where_they_should) {
    // A quarter from three o'clock on, clockwise: right and below the centre.
    for (const bool smooth : {false, true}) {
        const Draw pie = [](Canvas& c) { c.fill_pie(brush(), {0, 0, 41, 41}, 0, 90); };
        const Spots quarter = spots(41, 41, pie, smooth);
        EXPECT_TRUE(quarter.contains({30, 30}));
        EXPECT_NEAR(static_cast<double>(quarter.size()), 20.5 * 20.5 * 3.14159 / 4, 45);
        for (const auto& [x, y] : quarter) EXPECT_TRUE(x >= 20 && y >= 20) << x << ' ' << y;
    }
    // On a flat ellipse a ray at 45 degrees is one still, whatever the turn of the angles.
    for (const double turn : {0.0, 360.0, -720.0}) {
        const Draw part = [&](Canvas& c) { c.arc(pen(1), {0, 0, 81, 41}, 45 + turn, -90); };
        const Spots arc = spots(81, 41, part);
        for (const auto& [x, y] : arc) EXPECT_LE(std::abs(y - 20), x - 40 + 1) << x << ' ' << y;
        EXPECT_TRUE(arc.contains({80, 20}));
        EXPECT_GT(arc.size(), 30u);
    }
    const PixelRect bounds{2, 2, 20, 24};
    EXPECT_EQ(spots(30, 30, [&](Canvas& c) { c.pie(pen(1), bounds, 17, 400); }),
              spots(30, 30, [&](Canvas& c) { c.ellipse(pen(1), bounds); }));
    // Curves pass through their points; control points on a line make one.
    const PixelPoint points[] = {{3, 3}, {20, 30}, {35, 5}, {30, 35}, {5, 25}};
    for (const bool closed : {false, true}) {
        const Spots spline = spots(40, 40, [&](Canvas& c) { c.spline(pen(1), points, closed); });
        for (const PixelPoint p : points) EXPECT_TRUE(spline.contains({p.x, p.y}));
    }
    const PixelPoint straight[] = {{1, 1}, {5, 3}, {9, 5}, {13, 7}, {0, 39}};
    const Spots bezier = spots(40, 40, [&](Canvas& c) { c.bezier(pen(1), straight); });
    for (const auto& [x, y] : bezier) EXPECT_LE(std::abs(y - x / 2.0 - 0.5), 1) << x << ' ' << y;
    EXPECT_TRUE(bezier.contains({1, 1}) && bezier.contains({13, 7}));
    const Spots inside = spots(40, 40, [&](Canvas& c) { c.fill_spline(brush(), points); });
    EXPECT_TRUE(inside.contains({20, 31}) || inside.contains({25, 30}));
}

TEST_F(CanvasTest, survives_every_number) {
    TestRandom random(11);
    const std::int32_t wild[] = {0,     1,     -1,     7,         40,         -300,        5000,
                                 70000, -9999, 100000, 100000000, 2147483647, -2147483647, -2147483647 - 1};
    const float widths[] = {0, -1, 1, 1.5f, 2, 8, 300, 1e9f, -1e30f, 1e-30f, NAN, HUGE_VALF};
    const double angles[] = {0, 45, -90, 1e9, -1e300, 720, std::nan(""), HUGE_VAL, 1e-300, 359.999};
    const auto number = [&] { return random.below(2) == 0 ? random.one_of(wild) : random.between(-20, 69); };
    const auto sometimes_wild = [&](std::int32_t usual) { return random.below(3) == 0 ? number() : usual; };
    const auto point = [&] { return PixelPoint{number(), number()}; };
    const auto texture = Bitmap::create(5, 3);
    std::fill_n(texture->pixels().data, 15, 0x80FF0000);
    Picture picture(61, 47, 0x40808080);
    for (int round = 0; round < 6000; ++round) {
        Canvas canvas(picture.view(), *rasterizer_, random.below(2) == 0);
        const PenSettings p{random.one_of(widths), sometimes_wild(random.between(0, 4)), random.next()};
        BrushSettings b = brush(random.next());
        b.style = random.between(0, 4);
        b.hatchStyle = sometimes_wild(3);
        b.gradientStyle = sometimes_wild(2);
        b.textureStyle = sometimes_wild(1);
        b.texture = random.below(3) == 0 ? nullptr : texture;
        const PixelRect area{number(), number(), number(), number()};
        const double start = random.one_of(angles), sweep = random.one_of(angles);
        std::vector<PixelPoint> points(random.below(9));
        for (PixelPoint& at : points) at = point();
        const Draw draws[] = {
            [&](Canvas& c) { c.line(p, point(), point()); },
            [&](Canvas& c) { c.polyline(p, points); },
            [&](Canvas& c) { c.polygon(p, points); },
            [&](Canvas& c) { c.fill_polygon(b, points); },
            [&](Canvas& c) { c.rectangle(p, area); },
            [&](Canvas& c) { c.fill_rectangle(b, area); },
            [&](Canvas& c) { c.ellipse(p, area); },
            [&](Canvas& c) { c.fill_ellipse(b, area); },
            [&](Canvas& c) { c.arc(p, area, start, sweep); },
            [&](Canvas& c) { c.pie(p, area, start, sweep); },
            [&](Canvas& c) { c.fill_pie(b, area, start, sweep); },
            [&](Canvas& c) { c.bezier(p, points); },
            [&](Canvas& c) { c.spline(p, points, random.below(2) == 0); },
            [&](Canvas& c) { c.fill_spline(b, points); },
        };
        random.one_of(draws)(canvas);
    }
    Canvas(picture.view(), *rasterizer_, true).fill_ellipse(brush(), {-1000000, -1000000, 2000060, 2000060});
    EXPECT_TRUE(same_pixels(picture, Picture(61, 47, kInk)));
    Picture nothing(0, 0);
    Canvas(nothing.view(), *rasterizer_, true).line(pen(3), {0, 0}, {5, 5});
}

TEST_F(CanvasTest, large_targets_are_drawn_in_tiles_without_a_seam) {
    // Wider than a mask may be, and more pixels than one tile.
    const std::int32_t width = 40000, height = 400;
    const Draw diagonal = [&](Canvas& c) { c.line(pen(9), {0, 0}, {width - 1, height - 1}); };
    const Picture picture = draw(width, height, diagonal, true);
    // Its ends are cut off by the picture's edges.
    for (std::int32_t x = 1001; x < width - 1000; x += 7) {
        double total = 0, moment = 0;
        for (std::int32_t y = 0; y < height; ++y) {
            total += alpha_of(picture.at(x, y)) / 255.0;
            moment += y * (alpha_of(picture.at(x, y)) / 255.0);
        }
        EXPECT_NEAR(total, 9, 0.1) << x;
        EXPECT_NEAR(moment / total, (height - 1.0) * x / (width - 1.0), 0.1) << x;
    }
}

}  // namespace
}  // namespace pixvane::test
