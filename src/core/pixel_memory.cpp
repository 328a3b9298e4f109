// The memory of all bitmaps of the process: one limit, and blocks that are used again.
// SPDX-License-Identifier: MIT
#include "core/pixel_memory.h"

#include <limits>
#include <new>

namespace pixvane {
namespace {

// Enough for the history of one picture to turn round without touching the system.
constexpr std::size_t kMostKeptBlocks = 4;
// Small pictures are cheap to allocate; large ones must not linger in number.
constexpr std::uint64_t kMostKeptBytes = std::uint64_t{512} << 20;
constexpr std::size_t kGranule = 4096;
constexpr std::align_val_t kAlignment{64};

class HeapPages final : public PageSource {
public:
    void* allocate(std::size_t size) noexcept override {
        return ::operator new(size, kAlignment, std::nothrow);
    }
    void release(void* block, std::size_t) noexcept override { ::operator delete(block, kAlignment); }
    std::size_t machine_memory() const noexcept override { return std::numeric_limits<std::size_t>::max(); }
};

HeapPages& heap_pages() {
    static HeapPages pages;
    return pages;
}

}  // namespace

PixelMemory& PixelMemory::instance() {
    // Never destroyed: a control may be freed by a static destructor of its host.
    static auto* memory = new PixelMemory;
    return *memory;
}

PixelMemory::PixelMemory() : source_(&heap_pages()), limit_(std::numeric_limits<std::uint64_t>::max()) {
    kept_.reserve(kMostKeptBlocks + 1);
}

void PixelMemory::use(PageSource& source) {
    std::lock_guard lock(mutex_);
    if (source_ == &source) return;
    source_ = &source;
    limit_ = source.machine_memory() / 4 * 3;
}

void PixelMemory::set_limit(std::uint64_t bytes) {
    std::lock_guard lock(mutex_);
    limit_ = bytes;
}

std::uint64_t PixelMemory::limit() const {
    std::lock_guard lock(mutex_);
    return limit_;
}

std::uint64_t PixelMemory::in_use() const {
    std::lock_guard lock(mutex_);
    return inUse_;
}

PixelMemory::Block PixelMemory::acquire(std::size_t bytes) noexcept {
    const std::size_t size = (bytes + kGranule - 1) / kGranule * kGranule;
    std::lock_guard lock(mutex_);
    if (size < bytes || size > limit_ || inUse_ > limit_ - size) return {};
    for (std::size_t i = kept_.size(); i-- > 0;) {
        if (kept_[i].size != size) continue;
        const Block block = kept_[i];
        kept_.erase(kept_.begin() + static_cast<std::ptrdiff_t>(i));
        keptBytes_ -= size;
        inUse_ += size;
        return block;
    }
    // What is kept counts against the machine, if not against the limit: it makes room first.
    while (!kept_.empty() && inUse_ + keptBytes_ > limit_ - size) drop_oldest();
    void* data = source_->allocate(size);
    if (data == nullptr && !kept_.empty()) {
        while (!kept_.empty()) drop_oldest();
        data = source_->allocate(size);
    }
    if (data == nullptr) return {};
    inUse_ += size;
    return {data, size, source_};
}

void PixelMemory::release(Block block) noexcept {
    if (block.data == nullptr) return;
    std::lock_guard lock(mutex_);
    inUse_ -= block.size;
    kept_.push_back(block);
    keptBytes_ += block.size;
    while (kept_.size() > kMostKeptBlocks || keptBytes_ > kMostKeptBytes) drop_oldest();
}

void PixelMemory::trim() noexcept {
    std::lock_guard lock(mutex_);
    while (!kept_.empty()) drop_oldest();
}

void PixelMemory::drop_oldest() noexcept {
    const Block block = kept_.front();
    kept_.erase(kept_.begin());
    keptBytes_ -= block.size;
    block.source->release(block.data, block.size);
}

}  // namespace pixvane
