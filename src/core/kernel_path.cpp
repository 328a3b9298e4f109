// Which version of a kernel runs: the fast one, or the plain one that it is tested against.
// SPDX-License-Identifier: MIT
#include "core/kernel_path.h"

#include <atomic>

namespace pixvane {
namespace {
std::atomic<KernelPath> currentPath{KernelPath::Fast};
}

void set_kernel_path(KernelPath path) { currentPath.store(path, std::memory_order_relaxed); }
KernelPath kernel_path() { return currentPath.load(std::memory_order_relaxed); }

}  // namespace pixvane
