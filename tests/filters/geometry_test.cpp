// Tests of quarter turns and flips.
// SPDX-License-Identifier: MIT
#include "filters/geometry.h"

#include <gtest/gtest.h>

#include "support/pictures.h"

namespace pixvane::test {
namespace {

Picture turned(const Picture& source, std::int32_t type) {
    const bool exchanged = type % 2 != 0;
    Picture target(exchanged ? source.height : source.width, exchanged ? source.width : source.height);
    filters::rotate_flip(source.view(), target.view(), type);
    return target;
}

// 1 2 3
// 4 5 6
TEST(RotateFlip, ThreeByTwo) {
    const Picture source(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(turned(source, 0), source);
    EXPECT_EQ(turned(source, 1), Picture(2, 3, {4, 1, 5, 2, 6, 3}));
    EXPECT_EQ(turned(source, 2), Picture(3, 2, {6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(turned(source, 3), Picture(2, 3, {3, 6, 2, 5, 1, 4}));
    EXPECT_EQ(turned(source, 4), Picture(3, 2, {3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(turned(source, 5), Picture(2, 3, {1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(turned(source, 6), Picture(3, 2, {4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(turned(source, 7), Picture(2, 3, {6, 3, 5, 2, 4, 1}));
}

TEST(RotateFlip, TurnsAndFlipsUndoEachOther) {
    for (const auto& [width, height] : odd_sizes()) {
        const Picture source = random_picture(width, height, 21);
        EXPECT_TRUE(same_pixels(source, turned(turned(source, 1), 3)));
        EXPECT_TRUE(same_pixels(source, turned(turned(source, 2), 2)));
        EXPECT_TRUE(same_pixels(turned(source, 3), turned(turned(source, 1), 2)));
        for (const std::int32_t flip : {4, 5, 6, 7})
            EXPECT_TRUE(same_pixels(source, turned(turned(source, flip), flip)));
        EXPECT_TRUE(same_pixels(turned(source, 5), turned(turned(source, 1), 4)));
        EXPECT_TRUE(same_pixels(turned(source, 7), turned(turned(source, 3), 4)));
    }
}

}  // namespace
}  // namespace pixvane::test
