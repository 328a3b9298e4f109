// Rows of a picture shared among worker threads, joined before the call returns.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <type_traits>

namespace pixvane {

/// How many threads work on one call, the caller included; 1 at least, 64 at most. Starts at the number of
/// processors.
void set_worker_threads(std::int32_t count);
std::int32_t worker_threads();

/// The threads start with the first call that wants them and live until the last holder lets go.
class WorkerThreads {
public:
    WorkerThreads();
    ~WorkerThreads();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;
};

/// For the platform to call in the child of a fork: the parent's threads don't exist there and its lock may
/// be held for ever, so both are left behind; the number of threads is kept.
void forget_worker_threads_after_fork();

/// An estimate of what bands of rows take: so long for each row, and at the start of a band, before its first
/// row is known, as long as for so many rows.
struct RowCost {
    double nanoseconds;
    double lead = 0;

    // Most bands have no lead.
    RowCost(double nanosecondsPerRow, double leadRows = 0) : nanoseconds(nanosecondsPerRow), lead(leadRows) {}
};

namespace detail {
using RowsFunction = void (*)(void* context, std::int32_t first, std::int32_t last);
void run_rows(std::int32_t rows, RowCost cost, RowsFunction function, void* context);
}  // namespace detail

/// Calls work(first, last) for bands that together cover rows 0..rows exactly once. Work that would take
/// less than half a millisecond, by the estimate given, stays on the caller's thread. `work` must not throw,
/// and its result must not depend on how the rows are cut.
template <class Work>
void parallel_rows(std::int32_t rows, RowCost cost, Work&& work) {
    using Plain = std::remove_reference_t<Work>;
    detail::run_rows(
        rows, cost,
        [](void* context, std::int32_t first, std::int32_t last) {
            (*static_cast<Plain*>(context))(first, last);
        },
        const_cast<std::remove_const_t<Plain>*>(&work));
}

}  // namespace pixvane
