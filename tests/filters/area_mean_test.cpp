// Tests of the means over squares and rings, and of the filters that look at the local range.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "filters/area_reference.h"

namespace pixvane::test {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

template <class Make>
Picture picture_like(const Picture& source, Make make) {
    return picture_of(source.width, source.height, make);
}

Picture direct_mean(const Picture& source, std::int32_t radius, std::int64_t centreWeight) {
    return picture_like(source, [&](std::int32_t x, std::int32_t y) {
        return weighted_square(source.view(), x, y, radius, [=](std::int64_t dx, std::int64_t dy) {
            return dx == 0 && dy == 0 ? centreWeight : 1;
        });
    });
}

/// Sizes that are cheap to go through pixel by pixel, below and above the radii.
std::vector<std::pair<std::int32_t, std::int32_t>> small_sizes() {
    return {{1, 1}, {1, 9}, {11, 1}, {2, 3}, {17, 5}, {37, 23}};
}

TEST(BoxMean, RepeatsTheEdges) {
    const Picture source(3, 1, {0xFF000000, 0x00000009, 0x80000012});
    // (0 + 0 + 9) / 3, (0 + 9 + 18) / 3, (9 + 18 + 18) / 3.
    EXPECT_EQ(run(averaging(1, 1), source.view()).pixels,
              (std::vector<Pixel>{0xFF000003, 0xFF000009, 0xFF00000F}));
    // Nearly all comes from the repeated ends.
    EXPECT_EQ(run(averaging(16384, 1), source.view()), Picture(3, 1, {0xFF000008, 0xFF000009, 0xFF000009}));
    EXPECT_EQ(run(averaging(16384, 1), Picture(2, 3, 0x12FFFFFF).view()), Picture(2, 3, 0xFFFFFFFF));
}

TEST(BoxMean, WeighsTheCentre) {
    const Picture source = random_picture(9, 6, 3);
    const Picture copy = picture_like(source, [&](auto x, auto y) { return source.at(x, y) | kOpaque; });
    const Picture black(9, 6, kOpaque);
    EXPECT_EQ(run(averaging(0, 0), source.view()), black);
    for (const std::int32_t weight : {1, 7, -3, kLargest, -kLargest - 1})
        EXPECT_EQ(run(averaging(0, weight), source.view()), copy) << weight;
    // The weights of 3 x 3 add up to 0: the sum of the differences to the centre is left as it is.
    const Picture dark(3, 3, {0, 0, 0, 0, 0, 10, 0, 0, 20});
    EXPECT_EQ(run(averaging(1, -8), dark.view()).at(1, 1), 0xFF00001E);
    EXPECT_EQ(run(averaging(1, -8), dark.view()).at(2, 2), kOpaque);
    // -9: divided by -1.
    EXPECT_EQ(run(averaging(1, -9), dark.view()).at(1, 1), kOpaque);
    EXPECT_EQ(run(averaging(1, -9), dark.view()).at(2, 2), 0xFF000064);
}

TEST(BoxMean, EqualsTheSumOverTheSquare) {
    for (const auto& [width, height] : small_sizes()) {
        const Picture source = random_picture(width, height, 5);
        for (const std::int32_t radius : {0, 1, 2, 3, 8, 20, 45}) {
            for (const std::int32_t weight : {1, 0, -1, 5, -40, 1000, kLargest, -kLargest - 1})
                ASSERT_TRUE(same_pixels(direct_mean(source, radius, weight),
                                        run(averaging(radius, weight), source.view())))
                    << radius << " " << weight;
        }
    }
}

TEST(RingBlur, WeightsFallWithTheRing) {
    const auto weights = [](std::int32_t radius, std::int32_t fallOff) {
        const filters::RingWeights rings = filters::ring_weights(radius, fallOff);
        std::vector<std::int64_t> list(static_cast<std::size_t>(radius) + 1);
        for (const auto& box : rings.boxes) {
            for (std::int32_t ring = 0; ring <= box.radius; ++ring)
                list[static_cast<std::size_t>(ring)] += box.weight;
        }
        std::int64_t sum = list[0];
        for (std::int32_t ring = 1; ring <= radius; ++ring)
            sum += 8 * ring * list[static_cast<std::size_t>(ring)];
        EXPECT_EQ(rings.sum, sum);
        return list;
    };
    EXPECT_EQ(weights(1, 1), (std::vector<std::int64_t>{2, 1}));
    EXPECT_EQ(weights(2, 3), (std::vector<std::int64_t>{13, 3, 1}));
    EXPECT_EQ(weights(5, 1), (std::vector<std::int64_t>{26, 13, 5, 2, 1, 1}));
    EXPECT_EQ(filters::ring_weights(5, 1).boxes.size(), 5u);
    EXPECT_EQ(filters::ring_weights(20, 1).boxes.size(), 13u);
    EXPECT_EQ(weights(16384, 1 << 22)[0], filters::kMaxRingWeight + 1);
}

TEST(RingBlur, EqualsTheSumOverTheSquare) {
    for (const auto& [width, height] : small_sizes()) {
        const Picture source = random_picture(width, height, 7);
        for (const auto& [radius, fallOff] :
             {std::pair{1, 1}, {2, 3}, {3, 1}, {5, 2}, {9, 1}, {12, 100}, {30, 1}, {20, kLargest}}) {
            const Picture expected = picture_like(source, [&](std::int32_t x, std::int32_t y) {
                return weighted_square(source.view(), x, y, radius,
                                       [r = radius, b = fallOff](std::int64_t dx, std::int64_t dy) {
                                           const std::int64_t ring = std::max(std::abs(dx), std::abs(dy));
                                           return (std::int64_t{r} * r * b + 1) / (ring * ring * b + 1);
                                       });
            });
            ASSERT_TRUE(same_pixels(expected, run(blurring_by_rings(radius, fallOff), source.view())))
                << radius << " " << fallOff;
        }
    }
}

TEST(LocalRange, DecidesWhatIsBlurredOrSharpened) {
    for (const auto& [width, height] : small_sizes()) {
        // Few values, so that ranges of every size occur.
        Picture source = random_picture(width, height, 11);
        for (Pixel& p : source.pixels) p = (p & 0xFF070707) + 0x202020;
        for (const std::int32_t level : {-1, 0, 1, 3, 4, 5, 6, 7, 300}) {
            for (const std::int32_t radius : {1, 2, 5, 45}) {
                const Picture means = direct_mean(source, radius, 1);
                const Picture expected = picture_like(source, [&](std::int32_t x, std::int32_t y) {
                    return local_range(source.view(), x, y, radius) <= level ? means.at(x, y)
                                                                             : source.at(x, y);
                });
                ASSERT_TRUE(same_pixels(expected, run(blurring_smartly(radius, level), source.view())))
                    << radius << " " << level;
            }
            const Picture sharp = run(convolving(filters::sharpen_kernel(), "sharpen"), source.view());
            const Picture expected = picture_like(source, [&](std::int32_t x, std::int32_t y) {
                return local_range(source.view(), x, y, 1) >= level ? sharp.at(x, y) : source.at(x, y);
            });
            ASSERT_TRUE(same_pixels(expected, run(sharpening_edges(level), source.view()))) << level;
        }
    }
}

}  // namespace
}  // namespace pixvane::test
