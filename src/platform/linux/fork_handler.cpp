// Tells a forked child that the parent's worker threads are not there.
// SPDX-License-Identifier: MIT
#include <pthread.h>

#include "core/parallel_rows.h"
#include "platform/linux/linux_platform.h"

namespace pixvane {

void install_fork_handler() {
    [[maybe_unused]] static const int installed =
        ::pthread_atfork(nullptr, nullptr, [] { forget_worker_threads_after_fork(); });
}

}  // namespace pixvane
