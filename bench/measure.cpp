// Costs as multiples of memcpy, measured in rounds.
// SPDX-License-Identifier: MIT
#include "measure.h"

#include <sys/mman.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <new>
#include <numeric>
#include <random>

namespace bench {
namespace {

template <class Function>
double seconds_of(Function&& function) {
    const auto start = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The value that `part` (0..1) of the others lie below.
double quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const double place = part * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, values.size() - 1);
    return values[below] + (values[above] - values[below]) * (place - static_cast<double>(below));
}

}  // namespace

void CopyUnit::Unmap::operator()(unsigned char* memory) const { ::munmap(memory, bytes); }

// Pictures live on huge pages, which are a little faster to copy; on small ones the unit would flatter.
CopyUnit::Memory CopyUnit::map(std::size_t bytes) {
    constexpr std::size_t kHugePage = std::size_t{2} << 20;
    bytes = (bytes + kHugePage - 1) / kHugePage * kHugePage;
    void* memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    ::madvise(memory, bytes, MADV_HUGEPAGE);
    std::memset(memory, 0x5A, bytes);
    return Memory(static_cast<unsigned char*>(memory), Unmap{bytes});
}

CopyUnit::CopyUnit(std::size_t bytes) : bytes_(bytes), source_(map(bytes)), target_(map(bytes)) {}

double CopyUnit::seconds() {
    const auto copy = [this] {
        std::memcpy(target_.get(), source_.get(), bytes_);
        // Keeps the compiler from leaving out a copy that nothing reads.
        asm volatile("" : : "r"(target_.get()) : "memory");
    };
    const double first = seconds_of(copy);
    return std::min(first, seconds_of(copy));
}

Measurement measure(const std::vector<Task>& tasks, int rounds, CopyUnit& unit,
                    const std::function<void(std::size_t task, int round)>& starting) {
    std::vector<std::size_t> order(tasks.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::vector<std::vector<double>> ratios(tasks.size());
    std::vector<double> units;
    std::mt19937 shuffler(1);
    const auto run_uncounted = [](const Task& task) {
        task.before();
        task.run();
        task.after();
    };
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        starting(i, 0);
        run_uncounted(tasks[i]);
    }
    for (int round = 1; round <= rounds; ++round) {
        std::shuffle(order.begin(), order.end(), shuffler);
        for (const std::size_t i : order) {
            const Task& task = tasks[i];
            starting(i, round);
            if (task.warmUpEachRound) run_uncounted(task);
            task.before();
            units.push_back(unit.seconds());
            ratios[i].push_back(seconds_of(task.run) / units.back());
            task.after();
        }
    }
    Measurement result;
    result.unitSeconds = quantile(units, 0.5);
    for (const auto& list : ratios)
        result.costs.push_back({quantile(list, 0.5), quantile(list, 0.25), quantile(list, 0.75)});
    return result;
}

}  // namespace bench
