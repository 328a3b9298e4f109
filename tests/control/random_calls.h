// Commands with random arguments, for tests that loop over the table.
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "control/member_table.h"
#include "control/test_control.h"
#include "core/pixel_memory.h"
#include "core/random.h"

namespace pixvane::test {

inline std::vector<const Row*> commands() {
    std::vector<const Row*> list;
    for (const Row& row : member_table())
        if (row.edits) list.push_back(&row);
    return list;
}

/// An argument that the command accepts: of the slider, or now and then anywhere.
inline Value random_argument(const Arg& argument, TestRandom& random) {
    constexpr double kFarAway = 1000;
    const auto between = [&](double low, double high) {
        return low + (high - low) * (random.next() / 4294967295.0);
    };
    double low = argument.slider.is_given() ? argument.slider.minimum : -100;
    double high = argument.slider.is_given() ? argument.slider.maximum : 100;
    // Sizes stay small: it is their arithmetic that is tested, not the memory.
    high = std::min(high, 300.0);
    if (random.below(4) == 0) {
        low = argument.accepts.is_given() ? std::max(argument.accepts.minimum, -kFarAway) : -kFarAway;
        high = argument.accepts.is_given() ? std::min(argument.accepts.maximum, kFarAway) : kFarAway;
    }
    if (argument.kind == Kind::Bool) return truth(random.below(2) == 0);
    if (argument.field == Field::Byte) return integer(static_cast<std::int32_t>(random.below(256)));
    if (argument.kind == Kind::Double) return real(between(low, high));
    if (argument.kind == Kind::Color) return color(random.next());
    if (argument.kind == Kind::Int32Array) {
        // A kernel: small weights that add up to anything, 0 among them.
        static std::deque<std::vector<std::int32_t>> kernels;
        std::vector<std::int32_t>& kernel = kernels.emplace_back(random.below(2) == 0 ? 9 : 25);
        for (std::int32_t& weight : kernel) weight = static_cast<std::int32_t>(random.below(7)) - 3;
        return {Kind::Int32Array, 0, 0, kernel.data(), kernel.size()};
    }
    return integer(static_cast<std::int32_t>(std::lround(between(std::ceil(low), std::floor(high)))));
}

inline std::vector<Value> random_arguments(const Row& row, TestRandom& random) {
    std::vector<Value> values;
    for (const Arg& argument : row.arguments) values.push_back(random_argument(argument, random));
    return values;
}

inline std::string describe(const Row& row, const std::vector<Value>& values) {
    std::string text = std::string(row.name) + "(";
    for (const Value& value : values)
        text += (value.kind == Kind::Double ? std::to_string(value.d) : std::to_string(value.i)) + " ";
    return text + ")";
}

/// Limits the memory of all pictures while it lives: what would become larger does nothing then.
class MemoryScope {
public:
    explicit MemoryScope(std::uint64_t bytes) { PixelMemory::instance().set_limit(bytes); }
    ~MemoryScope() { PixelMemory::instance().set_limit(limit_); }
    MemoryScope(const MemoryScope&) = delete;
    MemoryScope& operator=(const MemoryScope&) = delete;

private:
    std::uint64_t limit_ = PixelMemory::instance().limit();
};

/// The picture after the command, with the random numbers that a control starts with.
inline Picture run(const Row& row, const Picture& picture, const std::vector<Value>& values) {
    TestControl c;
    c.load(picture);
    thread_random().set_state(1);
    c.invoke(row, values);
    return c.picture();
}

}  // namespace pixvane::test
