// Rows shared among threads: each once, whoever asks, nested or at the same time.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "core/parallel_rows.h"

namespace pixvane {
namespace {

constexpr double kDear = 1e6;  // nanoseconds a row: always worth splitting

/// How often each row was visited.
std::vector<int> visits(std::int32_t rows, double cost) {
    std::vector<std::atomic<int>> counts(static_cast<std::size_t>(rows));
    parallel_rows(rows, cost, [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y) ++counts[static_cast<std::size_t>(y)];
    });
    return {counts.begin(), counts.end()};
}

std::vector<int> once(std::int32_t rows) { return std::vector<int>(static_cast<std::size_t>(rows), 1); }

TEST(Threads, visit_every_row_once) {
    const WorkerThreads holder;
    for (const std::int32_t threads : {1, 2, 3, 7}) {
        set_worker_threads(threads);
        EXPECT_EQ(worker_threads(), threads);
        for (const std::int32_t rows : {1, 2, 3, 13, 100, 1001}) {
            EXPECT_EQ(visits(rows, kDear), once(rows)) << threads << " threads, " << rows << " rows";
            EXPECT_EQ(visits(rows, 0.001), once(rows));
        }
    }
    parallel_rows(0, kDear, [](std::int32_t, std::int32_t) { FAIL(); });
}

TEST(Threads, cut_fewer_bands_where_each_starts_dearly_but_one_for_each_thread) {
    const WorkerThreads holder;
    const auto bands_of = [](std::int32_t rows, double lead) {
        std::atomic<std::int32_t> bands{0}, visited{0};
        parallel_rows(rows, {kDear, lead}, [&](std::int32_t first, std::int32_t last) {
            ++bands;
            visited += last - first;
        });
        EXPECT_EQ(visited, rows);
        return bands.load();
    };
    for (const std::int32_t threads : {2, 3, 7}) {
        set_worker_threads(threads);
        std::int32_t before = bands_of(2100, 0);
        EXPECT_GT(before, 2 * threads);
        for (const double lead : {1.0, 30.0, 100.0, 300.0, 1e9}) {
            const std::int32_t bands = bands_of(2100, lead);
            EXPECT_LE(bands, before) << lead;
            before = bands;
        }
        EXPECT_EQ(before, threads);
        EXPECT_EQ(bands_of(threads, 1e9), threads);
        EXPECT_EQ(bands_of(0x7FFFFFFF, 1e9), threads);
    }
}

TEST(Threads, really_share_the_work) {
    const WorkerThreads holder;
    set_worker_threads(2);
    // Two rows that wait for each other end only if two threads are at it.
    std::atomic<int> arrived{0};
    parallel_rows(2, kDear, [&](std::int32_t first, std::int32_t last) {
        arrived += last - first;
        while (arrived < 2) std::this_thread::yield();
    });
    EXPECT_EQ(arrived, 2);
}

TEST(Threads, split_only_once_however_deep_the_calls) {
    const WorkerThreads holder;
    set_worker_threads(3);
    std::atomic<int> inner{0};
    parallel_rows(50, kDear, [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y)
            parallel_rows(10, kDear, [&](std::int32_t a, std::int32_t b) { inner += b - a; });
    });
    EXPECT_EQ(inner, 500);
}

TEST(Threads, leave_others_free_while_one_is_at_work) {
    const WorkerThreads holder;
    set_worker_threads(2);
    std::atomic<int> arrived{0};
    parallel_rows(2, kDear, [&](std::int32_t first, std::int32_t last) {
        arrived += last - first;
        // A second caller with a control of its own comes and goes while the first is inside.
        std::thread([] {
            const WorkerThreads other;
            EXPECT_EQ(worker_threads(), 2);
            EXPECT_EQ(visits(30, kDear), once(30));
        }).join();
    });
    EXPECT_EQ(arrived, 2);
}

TEST(Threads, serve_callers_on_several_threads_and_a_changing_number) {
    auto holder = std::make_unique<WorkerThreads>();
    std::atomic<bool> right{true};
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller)
        callers.emplace_back([&, caller] {
            const WorkerThreads own;
            for (int i = 0; i < 50; ++i) {
                set_worker_threads(1 + (caller + i) % 4);
                if (visits(97, kDear) != once(97)) right = false;
            }
        });
    holder.reset();
    for (std::thread& caller : callers) caller.join();
    EXPECT_TRUE(right);
    // Nobody holds the threads: the work is done all the same.
    EXPECT_EQ(visits(40, kDear), once(40));
}

}  // namespace
}  // namespace pixvane
