// The memory of all bitmaps of the process: one limit, and blocks that are used again.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "core/page_source.h"

namespace pixvane {

/// Fresh pages cost several copies of a picture in page faults, so released blocks are kept for the next
/// bitmap of the same size. Safe to call from any thread.
class PixelMemory {
public:
    static PixelMemory& instance();

    /// Where blocks come from, from now on; blocks that are out still go back to where they came from.
    /// The source must outlive the process's last bitmap.
    void use(PageSource& source);

    /// The most bytes that all bitmaps together may take; beyond it an allocation fails like any other.
    void set_limit(std::uint64_t bytes);
    std::uint64_t limit() const;
    /// Bytes in bitmaps that are alive; blocks kept for reuse don't count.
    std::uint64_t in_use() const;

    struct Block {
        void* data = nullptr;
        std::size_t size = 0;
        PageSource* source = nullptr;
    };
    /// A block of at least `bytes` bytes of undefined content; data is null if there is no memory.
    Block acquire(std::size_t bytes) noexcept;
    void release(Block block) noexcept;
    /// Gives the blocks that are kept for reuse back to the system.
    void trim() noexcept;

private:
    PixelMemory();
    void drop_oldest() noexcept;

    mutable std::mutex mutex_;
    PageSource* source_;
    std::vector<Block> kept_;  // oldest first
    std::uint64_t keptBytes_ = 0;
    std::uint64_t inUse_ = 0;
    std::uint64_t limit_;
};

}  // namespace pixvane
