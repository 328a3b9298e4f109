// Rotated pictures against the same in doubles.
// SPDX-License-Identifier: MIT
#include "draw/rotated_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/scaling/scaled_picture.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

constexpr Pixel kGround = 0xFF406020;

/// Colours times alpha, and alpha, of the place (u, v): between pixel centres, transparent beyond the edges.
struct Sample {
    double alpha = 0, channels[3] = {};
};

Sample sample(ConstPixelBuffer picture, double u, double v) {
    Sample sum;
    const double left = std::floor(u), top = std::floor(v);
    for (int j = 0; j < 2; ++j) {
        for (int i = 0; i < 2; ++i) {
            const double x = left + i, y = top + j;
            if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) continue;
            const Pixel p = picture.row(static_cast<std::int32_t>(y))[static_cast<std::int32_t>(x)];
            const double weight = (1 - std::fabs(u - x)) * (1 - std::fabs(v - y)) * alpha_of(p) / 255.0;
            sum.alpha += weight;
            for (int c = 0; c < 3; ++c) sum.channels[c] += weight * (p >> (8 * c) & 0xFF);
        }
    }
    return sum;
}

TEST(RotatedPicture, is_what_doubles_make_of_it) {
    TestRandom random(12);
    RotationScratch scratch;
    const auto between = [&](double low, double high) {
        return low + (high - low) * random.below(1001) / 1000;
    };
    for (std::uint64_t seed = 0; seed < 80; ++seed) {
        const std::int32_t width = random.between(1, 90), height = random.between(1, 70);
        Picture source =
            seed % 2 == 0 ? random_picture(width, height, seed) : random_opaque_picture(width, height, seed);
        const double scale = between(0.5, 3),
                     degrees = seed < 9 ? 90.0 * static_cast<double>(seed) - 360 : between(-400, 400);
        const DrawPoint center{between(-20, 120), between(-20, 90)};
        Picture drawn(101, 67, kGround);
        draw_rotated(drawn.view(), std::as_const(source).view(), center, scale, degrees, scratch);
        const double angle = degrees * std::numbers::pi / 180;
        for (const PixelPoint p : places(drawn.width, drawn.height)) {
            const double dx = (p.x + 0.5 - center.x) / scale, dy = (p.y + 0.5 - center.y) / scale;
            const Sample made =
                sample(source.view(), dx * std::cos(angle) + dy * std::sin(angle) + width / 2.0 - 0.5,
                       dy * std::cos(angle) - dx * std::sin(angle) + height / 2.0 - 0.5);
            for (int c = 0; c < 3; ++c) {
                const double expected = made.channels[c] + (1 - made.alpha) * (kGround >> (8 * c) & 0xFF);
                // A place is rounded to 1/256 of a pixel on both axes, and the result once or twice.
                ASSERT_NEAR(drawn.at(p.x, p.y) >> (8 * c) & 0xFF, expected, 2.5)
                    << "seed " << seed << " at " << p.x << ", " << p.y << " by " << degrees;
            }
        }
    }
}

TEST(RotatedPicture, is_exact_by_right_angles_and_averaged_when_small) {
    const Picture source = random_picture(40, 24, 5);
    RotationScratch scratch;
    for (int quarter = 0; quarter < 4; ++quarter) {
        Picture drawn(40, 40), expected(40, 40);
        draw_rotated(drawn.view(), source.view(), {20, 20}, 1, 90 * quarter, scratch);
        for (const auto& [x, y] : places(40, 24)) {
            const PixelPoint turned[] = {{x, y + 8}, {31 - y, x}, {39 - x, 31 - y}, {y + 8, 39 - x}};
            const Pixel p = source.at(x, y);
            expected.at(turned[quarter].x, turned[quarter].y) = alpha_of(p) == 0 ? 0 : p;
        }
        EXPECT_TRUE(same_pixels(expected, drawn)) << quarter;
    }
    Picture small(10, 6), scaled(10, 6);
    Scaling memory;
    draw_scaled(scaled.view(), source.view(), {0, 0, 10, 6}, {}, memory);
    draw_rotated(small.view(), source.view(), {5, 3}, 0.25, 360, scratch);
    EXPECT_TRUE(same_pixels(scaled, small));
}

TEST(RotatedPicture, survives_every_number) {
    const Picture source = random_picture(5, 4, 5);
    RotationScratch scratch;
    const double numbers[] = {0, -1, 1e-300, 1e300, HUGE_VAL, NAN, 45};
    for (const double scale : numbers)
        for (const double degrees : numbers)
            for (const double x : numbers) {
                Picture target(9, 9);
                draw_rotated(target.view(), source.view(), {x, 4}, scale, degrees, scratch);
                draw_rotated(target.view(), {}, {x, 4}, scale, degrees, scratch);
            }
}

}  // namespace
}  // namespace pixvane::test
