// Rows of a picture shared among worker threads, joined before the call returns.
// SPDX-License-Identifier: MIT
#include "core/parallel_rows.h"

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace pixvane {
namespace {

constexpr double kWorthSplitting = 500'000;  // nanoseconds
constexpr std::int32_t kMostThreads = 64;
// As many of the smallest bands would be each thread's share.
constexpr std::int32_t kSmallestPerThread = 8;

struct Job {
    detail::RowsFunction function;
    void* context;
    std::int32_t rows;
    std::int32_t threads;
    std::int32_t smallest;     // rows of a band, but for the last one
    std::int32_t next = 0;     // first row that nobody has taken yet
    std::int32_t helpers = 0;  // workers inside the job

    /// Half of what would be a thread's share of the rest: large bands first, and small ones at the end, so
    /// that nobody waits long for a thread that is slower or came late.
    std::int32_t next_band() const {
        const std::int32_t rest = rows - next;
        return std::min(rest, std::max(smallest, rest / (2 * threads)));
    }
};

// One job at a time; whoever finds the pool taken works alone.
class Pool {
public:
    explicit Pool(std::int32_t helpers) {
        threads_.reserve(static_cast<std::size_t>(helpers));
        try {
            for (std::int32_t i = 0; i < helpers; ++i) threads_.emplace_back([this] { serve(); });
        } catch (const std::system_error&) {
            // The system gives no more threads: those that run are enough.
        }
    }

    ~Pool() {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
        }
        wake_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }

    /// Threads that work on a job, the caller's included.
    std::int32_t size() const { return static_cast<std::int32_t>(threads_.size()) + 1; }

    void run(Job& job) {
        {
            std::lock_guard lock(mutex_);
            job_ = &job;
        }
        wake_.notify_all();
        std::unique_lock lock(mutex_);
        work(job, lock);
        job_ = nullptr;
        done_.wait(lock, [&] { return job.helpers == 0; });
    }

private:
    void serve() {
        std::unique_lock lock(mutex_);
        for (;;) {
            wake_.wait(lock, [&] { return stopping_ || (job_ != nullptr && job_->next < job_->rows); });
            if (stopping_) return;
            Job& job = *job_;
            ++job.helpers;
            work(job, lock);
            if (--job.helpers == 0) done_.notify_all();
        }
    }

    void work(Job& job, std::unique_lock<std::mutex>& lock) {
        while (job.next < job.rows) {
            const std::int32_t first = job.next;
            const std::int32_t last = first + job.next_band();
            job.next = last;
            lock.unlock();
            job.function(job.context, first, last);
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable done_;
    std::vector<std::thread> threads_;
    Job* job_ = nullptr;
    bool stopping_ = false;
};

struct PoolState {
    std::mutex mutex;  // never held while a job runs
    Pool* pool = nullptr;
    bool taken = false;  // by the one job that may run; other callers work alone meanwhile
    std::int32_t holders = 0;
    std::int32_t wanted = 0;       // threads; 0 until first asked for
    std::int32_t poolThreads = 0;  // what the pool was built for
};

PoolState* state = new PoolState;

// Set on the caller's thread while a job of its own runs: work that splits again stays on its thread.
thread_local bool insideJob = false;

std::int32_t wanted_locked() {
    if (state->wanted == 0)
        state->wanted =
            std::clamp(static_cast<std::int32_t>(std::thread::hardware_concurrency()), 1, kMostThreads);
    return state->wanted;
}

void drop_pool_locked() {
    delete state->pool;
    state->pool = nullptr;
}

}  // namespace

void set_worker_threads(std::int32_t count) {
    std::lock_guard lock(state->mutex);
    state->wanted = std::clamp(count, 1, kMostThreads);
}

std::int32_t worker_threads() {
    std::lock_guard lock(state->mutex);
    return wanted_locked();
}

WorkerThreads::WorkerThreads() {
    std::lock_guard lock(state->mutex);
    ++state->holders;
}

WorkerThreads::~WorkerThreads() {
    std::lock_guard lock(state->mutex);
    if (--state->holders == 0 && !state->taken) drop_pool_locked();
}

namespace {

/// The pool for one job, or null if the caller is to work alone.
Pool* take_pool() {
    std::lock_guard lock(state->mutex);
    const std::int32_t threads = wanted_locked();
    if (state->taken || state->holders == 0 || threads < 2) return nullptr;
    if (state->pool == nullptr || state->poolThreads != threads) {
        drop_pool_locked();
        state->pool = new Pool(threads - 1);
        state->poolThreads = threads;
    }
    state->taken = true;
    return state->pool;
}

void give_pool_back() {
    std::lock_guard lock(state->mutex);
    state->taken = false;
    if (state->holders == 0) drop_pool_locked();
}

/// Threads wait for each other for half a small band, say, and each pays for the lead of all its bands: the
/// sum is least for the square root of rows / (2 * lead * threads) bands a thread. At one a thread all have
/// the same share, as most machines' threads are equally fast.
std::int32_t smallest_band(std::int32_t rows, std::int32_t threads, double lead) {
    double each = kSmallestPerThread;
    if (lead > 0) each = std::min(each, std::sqrt(rows / (2 * lead * threads)));
    const std::int32_t bands = threads * std::max(1, static_cast<std::int32_t>(each));
    return (rows - 1) / bands + 1;
}

}  // namespace

void detail::run_rows(std::int32_t rows, RowCost cost, RowsFunction function, void* context) {
    if (rows <= 0) return;
    const bool worthSplitting = rows >= 2 && rows * cost.nanoseconds >= kWorthSplitting && !insideJob;
    Pool* pool = worthSplitting ? take_pool() : nullptr;
    if (pool == nullptr) {
        function(context, 0, rows);
        return;
    }
    const std::int32_t threads = pool->size();
    Job job{function, context, rows, threads, smallest_band(rows, threads, cost.lead)};
    insideJob = true;
    pool->run(job);
    insideJob = false;
    give_pool_back();
}

void forget_worker_threads_after_fork() {
    auto* fresh = new PoolState;
    fresh->holders = state->holders;
    fresh->wanted = state->wanted;
    state = fresh;
}

}  // namespace pixvane
