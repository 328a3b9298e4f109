// Working memory of the codecs, out of the same budget as the bitmaps.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_memory.h"

namespace pixvane::codecs {

/// Big enough to be worth recycling, and counted, so that a file can't make a decoder take more than the
/// process may. Small tables use the heap.
class Scratch {
public:
    explicit Scratch(std::uint64_t size)
        : block_(size <= SIZE_MAX ? PixelMemory::instance().acquire(static_cast<std::size_t>(size))
                                  : PixelMemory::Block{}) {}
    ~Scratch() { PixelMemory::instance().release(block_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// Null if there is no memory.
    std::uint8_t* data() const { return static_cast<std::uint8_t*>(block_.data); }

private:
    PixelMemory::Block block_;
};

/// What may still be allocated.
inline std::uint64_t memory_left() {
    const PixelMemory& memory = PixelMemory::instance();
    const std::uint64_t limit = memory.limit();
    const std::uint64_t used = memory.in_use();
    return used < limit ? limit - used : 0;
}

}  // namespace pixvane::codecs
