// The random numbers of the filters: one generator for each thread.
// SPDX-License-Identifier: MIT
#include "core/random.h"

namespace pixvane {

void RandomGenerator::jump(std::uint64_t count) {
    // Squares the step x -> x * multiplier + increment, and applies it where a bit of the count is set.
    std::uint32_t multiplier = kMultiplier;
    std::uint32_t increment = kIncrement;
    for (; count != 0; count >>= 1) {
        if (count & 1) state_ = state_ * multiplier + increment;
        increment = increment * multiplier + increment;
        multiplier *= multiplier;
    }
}

RandomGenerator& thread_random() {
    thread_local RandomGenerator generator;
    return generator;
}

}  // namespace pixvane
