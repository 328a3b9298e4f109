// Tests of the effects around a point.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "core/compose.h"
#include "filters/effects/effects.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

using filters::Focus;
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

Picture faded(const Picture& source, const Focus& focus) {
    Picture target(source.width, source.height);
    filters::focal_bw(source.view(), target.view(), focus, 0, source.height);
    return target;
}

TEST(FocalBw, fades_with_the_distance) {
    // Luma of pure green: 182. Distances 0 to 5.
    const Picture source(6, 1, 0x4000FF00);
    // Half way at distance 3: trunc((182 - 255) / 2 + 255) = 218.
    EXPECT_EQ(faded(source, {2, 2, 0, 0}),
              Picture(6, 1, {0x4000FF00, 0x4000FF00, 0xFF00FF00, 0xFF5BDA5B, 0xFFB6B6B6, 0xFFB6B6B6}));
    EXPECT_EQ(faded(source, {0, 0, 0, 0}), Picture(6, 1, 0xFFB6B6B6));
    EXPECT_EQ(faded(source, {7, 0, 0, 0}), source);
}

TEST(FocalBw, takes_numbers_of_any_size) {
    const Picture source = random_picture(21, 13, 3);
    const Picture grey = faded(source, {0, 0, 0, 0});
    for (const std::int32_t transition : {-1, -7, -kLargest - 1})
        EXPECT_EQ(faded(source, {0, transition, 5, 5}), grey);
    EXPECT_EQ(faded(source, {-5, 3, 5, 5}), grey);
    EXPECT_EQ(faded(source, {kLargest, 1, -kLargest - 1, -kLargest - 1}), grey);
    EXPECT_EQ(faded(source, {kLargest, kLargest, 10, 2'000'000'000}), source);
    // From -2 on a fade over 4 is half done at distance 0.
    EXPECT_EQ(faded(Picture(1, 1, 0xFF00FF00), {-2, 4, 0, 0}).at(0, 0), 0xFF5BDA5Bu);
}

/// With weights and without them, which must not differ.
Picture softened(const Picture& source, const Focus& focus) {
    Picture target(source.width, source.height);
    const bool changed = filters::soft_focus(source.view(), target.view(), {}, focus, 0, source.height);
    EXPECT_EQ(changed, source != target);
    Picture weights(source.width, source.height);
    filters::soft_focus_weights(weights.view(), focus, 0, source.height);
    Picture again(source.width, source.height);
    filters::soft_focus(source.view(), again.view(), weights.view(), focus, 0, source.height);
    EXPECT_TRUE(same_pixels(target, again));
    return target;
}

TEST(SoftFocus, weighs_by_the_distance) {
    Picture weights(8, 1);
    // From 3 on, over 3: trunc(2 (3 - 2 / 3 (d - 3))).
    filters::soft_focus_weights(weights.view(), {3, 3, 0, 0}, 0, 1);
    EXPECT_EQ(weights.pixels, (std::vector<Pixel>{0, 0, 0, 6, 4, 3, 2, 2}));
    filters::soft_focus_weights(weights.view(), {1, kLargest, 0, 0}, 0, 1);
    EXPECT_EQ(weights.pixels[1], 2u * kLargest);
    filters::soft_focus_weights(weights.view(), {1, 1, kLargest, -kLargest - 1}, 0, 1);
    EXPECT_EQ(weights, Picture(8, 1, 2));
}

TEST(SoftFocus, means_of_three_by_three) {
    const Picture source(3, 3, {0, 0, 0, 0, 0xC8, 0, 0, 0, 0});
    // Far away: 200 * 2 / 10 in the middle, 200 / 10 around it.
    const Picture soft = softened(source, {1, 1, 100, 100});
    EXPECT_EQ(soft.at(1, 1), kOpaque | 40);
    EXPECT_EQ(soft.at(0, 1), kOpaque | 20);
    EXPECT_EQ(soft.at(2, 2), kOpaque | 20);
    // Repeated edges: the corner counts four times and once more.
    EXPECT_EQ(softened(Picture(2, 2, {100, 0, 0, 0}), {1, 1, 100, 100}).at(0, 0), kOpaque | 50);
}

TEST(SoftFocus, draws_what_is_near_onto_itself) {
    const Focus everything{1000, 1, 5, 5};
    const Picture opaque = random_opaque_picture(17, 9, 3);
    EXPECT_EQ(softened(opaque, everything), opaque);
    const Picture any = random_picture(17, 9, 4);
    Picture expected = any;
    for (Pixel& p : expected.pixels) p = source_over(p, p);
    EXPECT_EQ(softened(any, everything), expected);
}

}  // namespace
}  // namespace pixvane::test
