// Memory that kernels work in, kept by each thread, so that nothing is allocated a second time.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace pixvane {

/// What the memory is for: at any time a thread has one block for each.
enum class Scratch {
    ScaledColumns,
    ScaledRows,
    ScaledLine,
    ScaledStarts,
    ScaledWeights,
    ScaledGroups,
    ScaledSums,
    Count
};

/// At least `bytes` bytes, aligned to a vector and to a line of the cache; null if there is no memory. The
/// content is undefined, and the block lasts until the thread asks for it anew, or ends.
void* thread_scratch(Scratch use, std::size_t bytes) noexcept;

template <class T>
T* thread_scratch(Scratch use, std::size_t count) noexcept {
    return static_cast<T*>(thread_scratch(use, count * sizeof(T)));
}

}  // namespace pixvane
