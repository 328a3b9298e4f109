// Views of 32-bit pixels in memory; they own nothing.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace pixvane {

/// One pixel, 0xAARRGGBB with straight (not premultiplied) alpha; bytes B, G, R, A in memory.
using Pixel = std::uint32_t;

constexpr std::uint32_t alpha_of(Pixel p) { return p >> 24; }
constexpr std::uint32_t red_of(Pixel p) { return (p >> 16) & 0xFF; }
constexpr std::uint32_t green_of(Pixel p) { return (p >> 8) & 0xFF; }
constexpr std::uint32_t blue_of(Pixel p) { return p & 0xFF; }
constexpr Pixel make_pixel(std::uint32_t a, std::uint32_t r, std::uint32_t g, std::uint32_t b) {
    return a << 24 | r << 16 | g << 8 | b;
}
constexpr Pixel kOpaque = 0xFF000000u;

/// The largest side and the largest number of pixels of a picture.
constexpr std::int32_t kMaxSide = 65535;
constexpr std::int64_t kMaxPixels = std::int64_t{1} << 29;

/// Whether a picture of this size may exist at all: both sides 1..kMaxSide, at most kMaxPixels pixels.
constexpr bool is_picture_size(std::int64_t width, std::int64_t height) {
    return width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide &&
           width * height <= kMaxPixels;
}

/// Pixels to read: rows top first, no padding between rows.
struct ConstPixelBuffer {
    const Pixel* data = nullptr;
    std::int32_t width = 0;
    std::int32_t height = 0;

    std::size_t count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    std::size_t bytes() const { return count() * sizeof(Pixel); }
    const Pixel* row(std::int32_t y) const {
        return data + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    ConstPixelBuffer rows(std::int32_t first, std::int32_t last) const {
        return {row(first), width, last - first};
    }
};

/// Pixels to write, laid out as a ConstPixelBuffer.
struct PixelBuffer {
    Pixel* data = nullptr;
    std::int32_t width = 0;
    std::int32_t height = 0;

    std::size_t count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
    std::size_t bytes() const { return count() * sizeof(Pixel); }
    Pixel* row(std::int32_t y) const {
        return data + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    PixelBuffer rows(std::int32_t first, std::int32_t last) const {
        return {row(first), width, last - first};
    }
    operator ConstPixelBuffer() const { return {data, width, height}; }
};

/// A rectangle of pixels to write, within a larger picture or the whole of one.
struct PixelArea {
    Pixel* data = nullptr;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::ptrdiff_t pitch = 0;  ///< pixels from row to row

    PixelArea() = default;
    PixelArea(PixelBuffer whole)
        : data(whole.data), width(whole.width), height(whole.height), pitch(whole.width) {}
    /// Of a rectangle that lies within `whole`.
    PixelArea(PixelBuffer whole, std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h)
        : data(whole.row(y) + x), width(w), height(h), pitch(whole.width) {}

    Pixel* row(std::int32_t y) const { return data + pitch * y; }
};

}  // namespace pixvane
