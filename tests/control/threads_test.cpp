// Every command of the table shared among threads: by itself a program that the thread sanitizer runs.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/random_calls.h"
#include "control/test_control.h"
#include "core/parallel_rows.h"
#include "support/instruction_sets.h"

namespace pixvane::test {
namespace {

/// Whether the plain version is quick enough for a large picture: it is where neighbours don't count.
bool is_plainly_quick(const Row& row) {
    return row.category == std::string("Colours") || row.category == std::string("Canvas");
}

TEST(Commands, do_the_same_on_a_large_picture_with_any_number_of_threads) {
    const MemoryScope memory(std::uint64_t{128} << 20);
    const Picture picture = random_picture(2111, 1403, 5);
    for (const Row* row : commands()) {
        TestRandom random(7);
        const std::vector<Value> values = random_arguments(*row, random);
        SCOPED_TRACE(describe(*row, values));
        set_worker_threads(1);
        const Picture alone = run(*row, picture, values);
        for (const std::int32_t threads : {2, 5}) {
            set_worker_threads(threads);
            ASSERT_TRUE(same_pixels(alone, run(*row, picture, values))) << threads << " threads";
        }
        if (!is_plainly_quick(*row)) continue;
        const PlainScope scope;
        ASSERT_TRUE(same_pixels(run(*row, picture, values), alone));
    }
}

}  // namespace
}  // namespace pixvane::test
