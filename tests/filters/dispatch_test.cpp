// Tests of run-time dispatch: every instruction set of the machine can be asked for, and then runs.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

TEST(Dispatch, RunsTheInstructionSetThatIsAskedFor) {
    std::set<std::string> names;
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        EXPECT_STREQ(scope.name(), running_target());
        names.insert(running_target());
    }
    EXPECT_EQ(names.size(), available_targets().size());
}

TEST(Dispatch, PicksTheBestOneWithoutBeingAsked) {
    EXPECT_STREQ(hwy::TargetName(available_targets().front()), running_target());
}

TEST(Pictures, ComparisonTellsThePixelThatDiffers) {
    const Picture expected = random_picture(7, 5, 1);
    Picture actual = expected;
    EXPECT_TRUE(same_pixels(expected, actual));
    actual.pixels[7 * 3 + 2] ^= 1u << 24;
    const auto result = same_pixels(expected, actual);
    EXPECT_FALSE(result);
    EXPECT_NE(std::string(result.message()).find("(2, 3)"), std::string::npos);
    EXPECT_FALSE(same_pixels(Picture(2, 3), Picture(3, 2)));
}

}  // namespace
}  // namespace pixvane::test
