// Tests of convolution and of the kernels of the members, against values worked out by hand.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "filters/area_reference.h"

namespace pixvane::test {
namespace {

using filters::Kernel;

Picture convolved(const Picture& source, const Kernel& kernel) {
    return run(convolving(kernel, "kernel"), source.view());
}

Kernel kernel_of(std::initializer_list<std::int32_t> weights) {
    Kernel kernel;
    kernel.side = weights.size() == 9 ? 3 : 5;
    std::copy(weights.begin(), weights.end(), kernel.weights.begin());
    return kernel;
}

Pixel grey(std::uint32_t value) { return kOpaque | 0x010101 * value; }

/// Grey pixels, transparent ones where the value is odd.
Picture greys(std::int32_t width, std::initializer_list<std::uint32_t> values) {
    Picture picture(width, static_cast<std::int32_t>(values.size()) / width);
    std::size_t i = 0;
    for (const std::uint32_t value : values)
        picture.pixels[i++] = 0x010101 * value | (value % 2 == 0 ? kOpaque : 0);
    return picture;
}

std::uint32_t centre_of(const Picture& source, const Kernel& kernel) {
    const Pixel p = convolved(source, kernel).at(source.width / 2, source.height / 2);
    EXPECT_EQ(p, grey(blue_of(p)));
    return blue_of(p);
}

TEST(Convolve, TellsLightFromDarkSides) {
    using namespace filters;
    const Picture rising = greys(3, {0, 10, 20, 0, 10, 20, 0, 10, 20});
    const Picture falling = greys(3, {30, 30, 30, 10, 10, 10, 0, 0, 0});
    const Picture dot = greys(3, {0, 2, 0, 4, 30, 6, 0, 8, 16});
    EXPECT_EQ(centre_of(rising, sobel_kernel(0)), 80u);
    EXPECT_EQ(centre_of(rising, sobel_kernel(1)), 0u);
    EXPECT_EQ(centre_of(rising, sobel_kernel(2)), 0u);
    EXPECT_EQ(centre_of(falling, sobel_kernel(2)), 0u);
    EXPECT_EQ(centre_of(falling, sobel_kernel(3)), 120u);
    EXPECT_EQ(centre_of(falling, sobel_kernel(-7)), 120u);
    EXPECT_EQ(centre_of(dot, laplas_kernel()), 100u);
    EXPECT_EQ(centre_of(dot, contour_kernel()), 204u);
    EXPECT_EQ(centre_of(greys(3, {0, 2, 0, 4, 100, 6, 0, 8, 16}), laplas_kernel()), 255u);
    EXPECT_EQ(centre_of(greys(3, {9, 9, 9, 9, 8, 9, 9, 9, 9}), contour_kernel()), 0u);
}

TEST(Convolve, SharpensByTwiceTheCentreLessTheDiagonals) {
    // 100 + 2 + 3 + 4 are 109; (8 * 60 - 109) / 4 is 92.75.
    EXPECT_EQ(centre_of(greys(3, {100, 200, 2, 0, 60, 250, 3, 7, 4}), filters::sharpen_kernel()), 92u);
    EXPECT_EQ(centre_of(greys(3, {250, 0, 250, 0, 100, 0, 250, 0, 250}), filters::sharpen_kernel()), 0u);
    EXPECT_EQ(centre_of(greys(3, {0, 0, 0, 0, 200, 0, 0, 0, 0}), filters::sharpen_kernel()), 255u);
}

TEST(Convolve, ReadsWeightsColumnByColumn) {
    const Picture source = random_picture(5, 4, 1);
    Kernel right;  // column x + 2, row y - 1
    right.side = 5;
    right.weights[21] = 5;
    for (const auto& [kernel, dx] : {std::pair{kernel_of({0, 0, 0, 1, 0, 0, 0, 0, 0}), 0}, {right, 2}}) {
        const Picture result = convolved(source, kernel);
        for (const auto& [x, y] : places(5, 4))
            EXPECT_EQ(result.at(x, y), source.at(std::min(x + dx, 4), std::max(y - 1, 0)) | kOpaque);
    }
}

TEST(Convolve, DividesTowardZeroAndNotByZero) {
    // (3 * 10 - 2 * 4) / 1, / -1, and not at all.
    const Picture source = greys(3, {0, 0, 0, 10, 4, 0, 0, 0, 0});
    EXPECT_EQ(centre_of(source, kernel_of({0, 3, 0, 0, -2, 0, 0, 0, 0})), 22u);
    EXPECT_EQ(centre_of(source, kernel_of({0, -3, 0, 0, 2, 0, 0, 0, 0})), 22u);
    EXPECT_EQ(centre_of(source, kernel_of({0, 3, 0, 0, -3, 0, 0, 0, 0})), 18u);
    EXPECT_EQ(centre_of(source, kernel_of({0, 3, 0, 0, -3, 0, 0, 0, 3})), 10u - 4u);
    // 10 / 3, and -10 / 3 in negative weights.
    EXPECT_EQ(centre_of(source, kernel_of({0, 1, 0, 0, 0, 0, 0, 2, 0})), 3u);
    EXPECT_EQ(centre_of(source, kernel_of({0, -1, 0, 0, 0, 0, 0, 4, 0})), 0u);
    // Sums that don't fit 32 bits.
    constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(centre_of(source, kernel_of({0, kLargest, 0, 0, kLargest, 0, 0, 0, 0})), 7u);
    EXPECT_EQ(centre_of(source, kernel_of({0, kLargest, 0, 0, -kLargest, 0, 0, 1, 0})), 255u);
}

TEST(Convolve, ReliefLightsOneSide) {
    EXPECT_EQ(filters::relief_kernel(0).weights,
              (std::array<std::int32_t, 25>{707, 0, -707, 1000, 1000, -1000, 707, 0, -707}));
    EXPECT_EQ(filters::relief_kernel(2).weights,
              (std::array<std::int32_t, 25>{-707, -1000, -707, 0, 1000, 0, 707, 1000, 707}));
    // Eight steps on, the angles are no longer whole turns.
    EXPECT_EQ(filters::relief_kernel(8).weights,
              (std::array<std::int32_t, 25>{707, 0, -707, 1000, 1000, -999, 707, 0, -707}));
    const Picture flat(5, 5, 0xFF4080C0);
    for (std::int32_t direction = -3; direction < 12; ++direction) {
        const Pixel p = convolved(flat, filters::relief_kernel(direction)).at(2, 2);
        EXPECT_NEAR(red_of(p), 0x40, 1) << direction;
        EXPECT_NEAR(green_of(p), 0x80, 1) << direction;
        EXPECT_NEAR(blue_of(p), 0xC0, 1) << direction;
    }
    // Lighter above: lit. Darker above: in the shade.
    EXPECT_GT(centre_of(greys(3, {90, 90, 90, 80, 80, 80, 70, 70, 70}), filters::relief_kernel(0)), 100u);
    EXPECT_LT(centre_of(greys(3, {70, 70, 70, 80, 80, 80, 90, 90, 90}), filters::relief_kernel(0)), 60u);
}

TEST(Convolve, EqualsTheSumOverTheSquare) {
    TestRandom random(9);
    for (const auto& [width, height] : odd_sizes()) {
        const Picture source = random_picture(width, height, random.next());
        for (const std::int32_t largest : {1, 3, 9, 60, 1000, 40'000, 2'000'000'000}) {
            Kernel kernel;
            kernel.side = random.below(2) == 0 ? 3 : 5;
            for (std::int32_t i = 0; i < kernel.side * kernel.side; ++i) {
                const auto size =
                    static_cast<std::int32_t>(random.below(static_cast<std::uint32_t>(largest) + 1));
                kernel.weights[static_cast<std::size_t>(i)] = random.below(3) == 0   ? 0
                                                              : random.below(3) == 0 ? -size
                                                                                     : size;
            }
            const std::int32_t half = kernel.side / 2;
            const Picture expected = picture_of(width, height, [&](std::int32_t x, std::int32_t y) {
                return weighted_square(source.view(), x, y, half, [&](std::int64_t dx, std::int64_t dy) {
                    return kernel.weights[static_cast<std::size_t>((dx + half) * kernel.side + dy + half)];
                });
            });
            ASSERT_TRUE(same_pixels(expected, convolved(source, kernel))) << largest;
        }
    }
}

TEST(Emboss, HalvesTheDifference) {
    const Picture source(3, 1, {0x00FF0014, 0xFF00FF0A, 0x80FFFF00});
    EXPECT_EQ(run(embossing(1, 0), source.view()).pixels,
              (std::vector<Pixel>{0xFFFF0084, 0xFF007F84, 0xFF7F7F7F}));
    EXPECT_EQ(run(embossing(-1, 0), source.view()).pixels,
              (std::vector<Pixel>{0xFF7F7F7F, 0xFF00FF7A, 0xFFFF7F7A}));
    EXPECT_EQ(run(embossing(0, 5), source.view()), Picture(3, 1, 0xFF7F7F7F));
    EXPECT_EQ(run(embossing(3, -5), Picture(1, 1, 0x01020304).view()), Picture(1, 1, 0xFF7F7F7F));
    const Picture column(1, 3, {0xFF000000, 0xFF000064, 0xFF0000C8});
    EXPECT_EQ(run(embossing(0, -2), column.view()).pixels,
              (std::vector<Pixel>{0xFF7F7F7F, 0xFF7F7FB1, 0xFF7F7FE3}));
}

}  // namespace
}  // namespace pixvane::test
