// The random numbers of the filters: one generator for each thread.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace pixvane {

/// A linear congruential generator, state * 214013 + 2531011 modulo 2^32; state 1 at the start.
class RandomGenerator {
public:
    static constexpr std::uint32_t kMultiplier = 214013;
    static constexpr std::uint32_t kIncrement = 2531011;

    /// The next number, 0..32767.
    std::int32_t next() {
        state_ = state_ * kMultiplier + kIncrement;
        return static_cast<std::int32_t>((state_ >> 16) & 0x7FFF);
    }
    /// As if next() had been called `count` times.
    void jump(std::uint64_t count);

    std::uint32_t state() const { return state_; }
    void set_state(std::uint32_t state) { state_ = state; }

private:
    std::uint32_t state_ = 1;
};

/// The generator of the calling thread.
RandomGenerator& thread_random();

}  // namespace pixvane
