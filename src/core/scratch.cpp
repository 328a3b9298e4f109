// Memory that kernels work in, kept by each thread, so that nothing is allocated a second time.
// SPDX-License-Identifier: MIT
#include "core/scratch.h"

#include <hwy/aligned_allocator.h>

#include <array>

namespace pixvane {
namespace {

struct Block {
    hwy::AlignedFreeUniquePtr<std::byte[]> memory;
    std::size_t size = 0;
};

}  // namespace

void* thread_scratch(Scratch use, std::size_t bytes) noexcept {
    thread_local std::array<Block, static_cast<std::size_t>(Scratch::Count)> blocks;
    Block& block = blocks[static_cast<std::size_t>(use)];
    if (block.size < bytes) {
        block.memory.reset();
        block.memory = hwy::AllocateAligned<std::byte>(bytes);
        block.size = block.memory == nullptr ? 0 : bytes;
    }
    return block.memory.get();
}

}  // namespace pixvane
