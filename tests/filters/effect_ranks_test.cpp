// Tests of the least, largest and middle values around a pixel, and of the noise that stands out.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "filters/effects/effects.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

using Filter = void (*)(ConstPixelBuffer, PixelBuffer, std::int32_t, std::int32_t, std::int32_t);

Picture filtered(Filter filter, const Picture& source, std::int32_t radius) {
    Picture target(source.width, source.height, 0x12345678);
    filter(source.view(), target.view(), radius, 0, source.height);
    return target;
}

/// The channel at `shift` of every pixel in the window, in no particular order.
std::vector<std::uint32_t> window_of(const Picture& source, std::int32_t x, std::int32_t y, std::int32_t r,
                                     int shift) {
    std::vector<std::uint32_t> values;
    for (const auto& [u, v] : places(2 * r + 1, 2 * r + 1)) {
        const Pixel p = source.at(std::clamp(x - r + u, 0, source.width - 1),
                                  std::clamp(y - r + v, 0, source.height - 1));
        values.push_back((p >> shift) & 0xFF);
    }
    return values;
}

/// Each channel from its window by itself: choose(values, value of the pixel).
template <class Choose>
Picture from_windows(const Picture& source, std::int32_t radius, Choose choose) {
    return picture_of(source.width, source.height, [&](std::int32_t x, std::int32_t y) {
        Pixel p = kOpaque;
        for (const int shift : {0, 8, 16})
            p |= choose(window_of(source, x, y, radius, shift), source.at(x, y) >> shift & 0xFF) << shift;
        return p;
    });
}

// Radii from none to beyond the picture.
const std::vector<std::int32_t> kRadii = {0, 1, 2, 3, 4, 5, 6, 7, 9, 14, 31};

TEST(Ranks, are_chosen_from_the_window) {
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 3}, {19, 1}, {1, 12}, {13, 11}}) {
        const Picture source = random_picture(width, height, 71);
        for (const std::int32_t radius : kRadii) {
            SCOPED_TRACE(radius);
            const auto of_rank = [&](auto rank) {
                return from_windows(source, radius, [=](std::vector<std::uint32_t> values, std::uint32_t) {
                    std::sort(values.begin(), values.end());
                    return values[rank(values.size())];
                });
            };
            ASSERT_TRUE(same_pixels(of_rank([](auto) { return std::size_t{0}; }),
                                    filtered(filters::minimal, source, radius)));
            ASSERT_TRUE(same_pixels(of_rank([](auto n) { return n - 1; }),
                                    filtered(filters::maximal, source, radius)));
            ASSERT_TRUE(same_pixels(of_rank([](auto n) { return n / 2; }),
                                    filtered(filters::median, source, radius)));
        }
    }
}

// The formula, in its order.
Picture quietened(const Picture& source, std::int32_t radius) {
    const double n = 2 * radius + 1;
    const double k = 1.0 / (n * n);
    return from_windows(source, radius, [=](const std::vector<std::uint32_t>& values, std::uint32_t value) {
        std::int64_t sum = 0, total = 0;
        for (const std::uint32_t v : values) sum += v;
        const double m = static_cast<double>(sum) * k;
        const auto off = [m](std::uint32_t v) { return std::abs(static_cast<int>(v - m)); };
        for (const std::uint32_t v : values) total += off(v);
        const bool standsOut = total != 0 && off(value) / static_cast<double>(total) > 1.5 * k;
        return standsOut ? static_cast<std::uint32_t>(m) : value;
    });
}

/// Few values, so that means are often whole numbers and deviations equal their limit.
Picture coarse_picture(std::int32_t width, std::int32_t height, std::uint32_t values, std::uint64_t seed) {
    Picture picture(width, height);
    TestRandom random(seed);
    for (Pixel& p : picture.pixels) {
        for (int i = 0; i < 4; ++i) p = p << 8 | random.below(values) * (255 / (values - 1));
    }
    return picture;
}

TEST(AntiNoise, follows_its_formula_in_doubles) {
    for (const std::int32_t radius : {1, 2, 3, 4, 5, 8, 11, 20}) {
        SCOPED_TRACE(radius);
        for (const std::uint32_t values : {2u, 3u, 4u, 256u}) {
            const Picture source = coarse_picture(23, 9, values, values);
            ASSERT_TRUE(
                same_pixels(quietened(source, radius), filtered(filters::anti_noise, source, radius)));
        }
        const Picture source = random_picture(17, 13, 5);
        ASSERT_TRUE(same_pixels(quietened(source, radius), filtered(filters::anti_noise, source, radius)));
    }
}

TEST(AntiNoise, keeps_what_is_even_and_takes_off_what_stands_out) {
    for (const std::int32_t radius : {1, 2, 3, 7}) {
        for (std::uint32_t grey = 0; grey < 256; ++grey) {
            const Picture even(9, 7, 0x40000000 | 0x010101 * grey);
            ASSERT_EQ(filtered(filters::anti_noise, even, radius), Picture(9, 7, kOpaque | 0x010101 * grey));
        }
    }
    // In its own window the mean is 9 / 9 + 100: all others deviate by 1, which truncation leaves at 0 or 1.
    Picture spot(3, 3, 0xFF646464);
    spot.pixels[4] = 0xFF64646D;
    EXPECT_EQ(filtered(filters::anti_noise, spot, 1).at(1, 1), 0xFF646465);
}

}  // namespace
}  // namespace pixvane::test
