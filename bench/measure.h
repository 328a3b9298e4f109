// Costs as multiples of memcpy, measured in rounds.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace bench {

/// The unit: a copy of `bytes` bytes in memory of the kind that pictures are kept in.
class CopyUnit {
public:
    explicit CopyUnit(std::size_t bytes);
    /// Seconds of the better of two copies in a row.
    double seconds();

private:
    struct Unmap {
        std::size_t bytes;
        void operator()(unsigned char* memory) const;
    };
    using Memory = std::unique_ptr<unsigned char, Unmap>;
    static Memory map(std::size_t bytes);

    std::size_t bytes_;
    Memory source_;
    Memory target_;
};

/// One thing to measure; `before` and `after` are not counted.
struct Task {
    std::function<void()> before;
    std::function<void()> run;
    std::function<void()> after;
    bool warmUpEachRound = false;  ///< run once uncounted in every round, not only before the first
};

struct Cost {
    double median = 0;  ///< of the ratios to the unit
    double low = 0;     ///< the quartiles
    double high = 0;
};

struct Measurement {
    std::vector<Cost> costs;  ///< one for each task
    double unitSeconds = 0;   ///< median
};

/// Measures all tasks `rounds` times, in each round in another order and each right after the unit.
/// `starting` is told before each of them which one starts and in which round: 0 for the uncounted one before
/// the first.
Measurement measure(const std::vector<Task>& tasks, int rounds, CopyUnit& unit,
                    const std::function<void(std::size_t task, int round)>& starting);

}  // namespace bench
