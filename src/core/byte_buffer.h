// Bytes: a view of some, and an owner that doesn't clear what is about to be overwritten.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace pixvane {

using ByteSpan = std::span<const std::uint8_t>;

class ByteBuffer {
public:
    ByteBuffer() = default;
    /// `size` bytes of undefined content. Throws std::bad_alloc.
    explicit ByteBuffer(std::size_t size)
        : bytes_(std::make_unique_for_overwrite<std::uint8_t[]>(size)), size_(size) {}

    std::uint8_t* data() { return bytes_.get(); }
    const std::uint8_t* data() const { return bytes_.get(); }
    std::size_t size() const { return size_; }
    /// Forgets the bytes from `size` on; never grows.
    void shrink(std::size_t size) {
        if (size < size_) size_ = size;
    }
    operator ByteSpan() const { return {bytes_.get(), size_}; }

private:
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_ = 0;
};

}  // namespace pixvane
