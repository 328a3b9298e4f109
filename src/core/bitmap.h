// A bitmap: the owner of one picture's pixels.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/pixel_buffer.h"
#include "core/pixel_memory.h"

namespace pixvane {

/// Shared only so that a result that a caller has yet to fetch can outlive the history slot it came from.
class Bitmap {
public:
    /// A bitmap of undefined content, or null if the size is no picture's or there is no memory for it.
    static std::shared_ptr<Bitmap> create(std::int64_t width, std::int64_t height) noexcept;

    explicit Bitmap(PixelMemory::Block block, std::int32_t width, std::int32_t height)
        : block_(block), width_(width), height_(height) {}
    ~Bitmap() { PixelMemory::instance().release(block_); }
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    std::int32_t width() const { return width_; }
    std::int32_t height() const { return height_; }
    PixelBuffer pixels() { return {static_cast<Pixel*>(block_.data), width_, height_}; }
    ConstPixelBuffer pixels() const { return {static_cast<const Pixel*>(block_.data), width_, height_}; }

private:
    PixelMemory::Block block_;
    std::int32_t width_;
    std::int32_t height_;
};

}  // namespace pixvane
