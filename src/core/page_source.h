// The port through which big blocks of memory come from the system.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace pixvane {

class PageSource {
public:
    virtual ~PageSource() = default;
    /// `size` bytes aligned to 64, or null. The content is undefined.
    virtual void* allocate(std::size_t size) noexcept = 0;
    virtual void release(void* block, std::size_t size) noexcept = 0;
    /// The memory of the machine in bytes, from which the default limit is made.
    virtual std::size_t machine_memory() const noexcept = 0;
};

}  // namespace pixvane
