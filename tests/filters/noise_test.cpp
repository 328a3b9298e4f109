// Tests of the random offsets: which numbers are drawn, in which order, and what becomes of them.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "filters/adjust/adjust.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

TEST(Noise, FirstDrawsOfAThread) {
    // 41, 18467, 6334, 26500, 19169, 15724 are the first numbers.
    const Picture source(1, 1, 0x00808080);
    Picture target(1, 1);
    RandomGenerator random;
    // trunc(41 / 32767 * 1000) = 1, and 18467 turns it: 127.
    filters::noise(source.view(), target.view(), true, 1000, random);
    EXPECT_EQ(target.at(0, 0), 0xFF7F7F7Fu);
    EXPECT_EQ(random.next(), 6334);
    // Red as before; green 6334 * 100 / 32767 = 19.3, turned by 26500; blue 19169: 58.5, not turned by 15724.
    random = {};
    filters::noise(source.view(), target.view(), false, 100, random);
    EXPECT_EQ(target.at(0, 0), make_pixel(255, 128, 128 - 19, 128 + 58));
    EXPECT_EQ(random.next(), 11478);
}

TEST(Noise, NothingChangesForNoAmountButDrawsAreMade) {
    const Picture source = random_picture(19, 7, 4);
    Picture target(19, 7);
    for (const bool same : {true, false}) {
        RandomGenerator random;
        filters::noise(source.view(), target.view(), same, 0, random);
        for (std::size_t i = 0; i < source.pixels.size(); ++i)
            ASSERT_EQ(target.pixels[i], source.pixels[i] | kOpaque);
        RandomGenerator expected;
        expected.jump(19u * 7 * (same ? 2 : 6));
        EXPECT_EQ(random.state(), expected.state());
    }
}

TEST(Noise, StaysWithinTheAmount) {
    const Picture source(300, 200, 0xFF808080);
    Picture target(300, 200);
    RandomGenerator random;
    filters::noise(source.view(), target.view(), false, 30, random);
    std::set<std::uint32_t> values;
    for (const Pixel p : target.pixels) values.insert({red_of(p), green_of(p), blue_of(p)});
    // Among so many numbers the largest one turns up, which gives the whole amount.
    EXPECT_EQ(*values.begin(), 128u - 30);
    EXPECT_EQ(*values.rbegin(), 128u + 30);
}

TEST(Noise, PartsEqualTheWholeWhenTheGeneratorJumpsAhead) {
    const Picture source = random_picture(53, 20, 8);
    for (const bool same : {true, false}) {
        RandomGenerator random;
        Picture whole(53, 20);
        filters::noise(source.view(), whole.view(), same, 70, random);
        Picture parts(53, 20);
        for (const std::int32_t first : {13, 0}) {
            RandomGenerator ahead;
            ahead.jump(std::uint64_t{filters::noise_draws(same)} * 53 * static_cast<std::uint64_t>(first));
            const std::int32_t last = first == 0 ? 13 : 20;
            filters::noise(source.view().rows(first, last), parts.view().rows(first, last), same, 70, ahead);
        }
        EXPECT_TRUE(same_pixels(whole, parts));
    }
}

TEST(Noise, AnyAmountIsDefined) {
    const Picture source(5, 5, 0xFF808080);
    Picture target(5, 5);
    for (const std::int32_t amount :
         {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        RandomGenerator random;
        filters::noise(source.view(), target.view(), true, amount, random);
        for (const Pixel p : target.pixels) ASSERT_TRUE(p == 0xFF000000 || p == 0xFFFFFFFF);
    }
}

}  // namespace
}  // namespace pixvane::test
