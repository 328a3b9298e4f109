// Commands on areas: their odd arguments, and the one that is recorded only if it ran.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <vector>

#include "control/test_control.h"

namespace pixvane {
namespace {

using test::integer;
using test::Picture;
using test::TestControl;

Value numbers(const std::vector<std::int32_t>& list) {
    return {Kind::Int32Array, 0, 0, list.data(), list.size()};
}

TEST(AreaCommands, average_of_no_square_is_black) {
    TestControl c;
    c.load(test::random_picture(9, 7, 3));
    for (const std::int32_t radius : {-1, -8}) {
        c.call("Average", {integer(3), integer(radius)});
        EXPECT_TRUE(test::same_pixels(Picture(9, 7, kOpaque), c.picture()));
        c.call("Undo");
    }
    c.call("Average", {integer(1), integer(0)});
    EXPECT_NE(c.picture().pixels[5], kOpaque);
}

TEST(AreaCommands, emboss_looks_into_eight_directions) {
    // Each neighbour of the centre has a grey of its own.
    Picture picture(3, 3);
    for (std::uint32_t i = 0; i < 9; ++i) picture.pixels[i] = kOpaque | 0x010101 * (20 * i);
    const std::size_t neighbours[] = {1, 2, 5, 8, 7, 6, 3, 0};
    for (std::int32_t direction = -1; direction < 10; ++direction) {
        const std::size_t compared = neighbours[direction >= 0 && direction < 8 ? direction : 7];
        const std::size_t opposite = 8 - compared;
        for (const std::int32_t distance : {1, -1}) {
            TestControl c;
            c.load(picture);
            c.call("Emboss", {integer(distance), integer(direction)});
            const std::size_t other = distance > 0 ? compared : opposite;
            EXPECT_EQ(blue_of(c.picture().pixels[4]), (255 + 80 - 20 * other) / 2) << direction;
        }
    }
}

TEST(AreaCommands, user_effect_is_recorded_after_it_ran) {
    const std::vector<std::int32_t> zeros(9, 0);
    const std::vector<std::int32_t> ones(25, 1);
    TestControl c;
    c.call("BeginMacros");
    const MacroScript& macro = c.control.macro();
    const std::size_t steps = macro.codes().size();
    const std::size_t bytes = macro.arguments().size();
    c.call("UserEffect", {numbers(zeros)});
    EXPECT_EQ(macro.codes().size(), steps) << "without a picture";
    c.load(test::random_picture(6, 6, 1));
    c.call("UserEffect", {Value{}});
    c.call("UserEffect", {numbers(std::vector<std::int32_t>(10, 1))});
    EXPECT_EQ(macro.codes().size(), steps);
    c.call("UserEffect", {numbers(zeros)});
    EXPECT_TRUE(test::same_pixels(Picture(6, 6, kOpaque), c.picture()));
    c.call("UserEffect", {numbers(ones)});
    EXPECT_EQ(macro.codes().size(), steps + 2);
    EXPECT_EQ(macro.arguments().size(), bytes + 2 * 4 + (9 + 25) * 4);
}

}  // namespace
}  // namespace pixvane
