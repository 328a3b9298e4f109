// The bytes of a file in the making.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstring>

#include "core/byte_buffer.h"

namespace pixvane::codecs {

/// Grows as it is written to; untouched memory costs nothing, so a generous first guess is a good one.
class Output {
public:
    explicit Output(std::size_t guess) : buffer_(std::max<std::size_t>(guess, 4096)) {}

    std::size_t size() const { return size_; }
    std::uint8_t* data() { return buffer_.data(); }

    /// Room for `size` more bytes at the end. Throws std::bad_alloc. What is written there is kept by add().
    std::uint8_t* room(std::size_t size) {
        if (buffer_.size() - size_ < size) grow(size_ + size);
        return buffer_.data() + size_;
    }
    std::size_t capacity() const { return buffer_.size(); }
    void add(std::size_t size) { size_ += size; }
    void append(ByteSpan bytes) {
        if (bytes.empty()) return;
        std::memcpy(room(bytes.size()), bytes.data(), bytes.size());
        add(bytes.size());
    }

    /// Overwrites what is there; a gap before the bytes is filled with zeros.
    void put_at(std::size_t position, ByteSpan bytes) {
        const std::size_t end = position + bytes.size();
        if (end > size_) {
            std::uint8_t* fresh = room(end - size_);
            if (position > size_) std::memset(fresh, 0, position - size_);
            add(end - size_);
        }
        std::memcpy(buffer_.data() + position, bytes.data(), bytes.size());
    }

    ByteBuffer take() {
        buffer_.shrink(size_);
        return std::move(buffer_);
    }

private:
    void grow(std::size_t atLeast) {
        ByteBuffer larger(std::max(atLeast, buffer_.size() * 2));
        std::memcpy(larger.data(), buffer_.data(), size_);
        buffer_ = std::move(larger);
    }

    ByteBuffer buffer_;
    std::size_t size_ = 0;
};

}  // namespace pixvane::codecs
