// Memory that the bands of one picture work in.
// SPDX-License-Identifier: MIT
#include "filters/area/band_scratch.h"

#include "core/parallel_rows.h"

namespace pixvane::filters {

BandScratch::BandScratch(std::size_t bytes) {
    const auto count = static_cast<std::size_t>(worker_threads());
    blocks_.reserve(count);
    unused_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        blocks_.emplace_back(static_cast<std::byte*>(::operator new[](bytes, std::align_val_t{kAlignment})));
        unused_.push_back(blocks_.back().get());
    }
}

// Should there be more threads by now than there were, some of them wait here.
std::byte* BandScratch::take() {
    std::unique_lock lock(mutex_);
    returned_.wait(lock, [&] { return !unused_.empty(); });
    std::byte* block = unused_.back();
    unused_.pop_back();
    return block;
}

void BandScratch::give_back(std::byte* block) {
    {
        const std::lock_guard lock(mutex_);
        unused_.push_back(block);
    }
    returned_.notify_one();
}

}  // namespace pixvane::filters
