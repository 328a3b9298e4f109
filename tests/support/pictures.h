// Pictures for tests: owned pixels, random ones, and a comparison that says where two pictures differ.
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "core/geometry.h"
#include "core/pixel_buffer.h"

namespace pixvane::test {

/// The owner of a test's pixels.
struct Picture {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<Pixel> pixels;

    Picture() = default;
    Picture(std::int32_t w, std::int32_t h, Pixel value = 0)
        : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), value) {}
    Picture(std::int32_t w, std::int32_t h, std::vector<Pixel> values)
        : width(w), height(h), pixels(std::move(values)) {}
    explicit Picture(ConstPixelBuffer other)
        : Picture(other.width, other.height, std::vector<Pixel>(other.data, other.data + other.count())) {}

    PixelBuffer view() { return {pixels.data(), width, height}; }
    ConstPixelBuffer view() const { return {pixels.data(), width, height}; }
    operator ConstPixelBuffer() const { return view(); }
    Pixel& at(std::int32_t x, std::int32_t y) { return view().row(y)[x]; }
    Pixel at(std::int32_t x, std::int32_t y) const { return view().row(y)[x]; }
    bool operator==(const Picture&) const = default;
};

/// The places of a picture of this size, row by row.
inline std::vector<PixelPoint> places(std::int32_t width, std::int32_t height) {
    std::vector<PixelPoint> list;
    for (std::int32_t y = 0; y < height; ++y)
        for (std::int32_t x = 0; x < width; ++x) list.push_back({x, y});
    return list;
}

/// The picture whose pixels are make(x, y).
template <class Make>
Picture picture_of(std::int32_t width, std::int32_t height, Make make) {
    Picture picture(width, height);
    for (std::int32_t y = 0; y < height; ++y)
        for (std::int32_t x = 0; x < width; ++x) picture.at(x, y) = static_cast<Pixel>(make(x, y));
    return picture;
}

/// A small generator of its own, so that a test's pictures never depend on the code under test.
class TestRandom {
public:
    explicit TestRandom(std::uint64_t seed) : state_(seed * 2 + 1) {}
    std::uint32_t next() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        const std::uint64_t mixed = (state_ ^ (state_ >> 29)) * 0xBF58476D1CE4E5B9u;
        return static_cast<std::uint32_t>(mixed >> 32);
    }
    /// 0..limit - 1.
    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>((std::uint64_t{next()} * limit) >> 32);
    }
    /// low..high.
    std::int32_t between(std::int32_t low, std::int32_t high) {
        return low + static_cast<std::int32_t>(below(static_cast<std::uint32_t>(high - low) + 1));
    }
    template <class List>
    auto& one_of(const List& list) {
        return list[below(static_cast<std::uint32_t>(std::size(list)))];
    }

private:
    std::uint64_t state_;
};

/// Random colours with the cases that matter mixed in: greys, black and white, repeated pixels, and alpha 0,
/// 255 or anything between.
inline Picture random_picture(std::int32_t width, std::int32_t height, std::uint64_t seed) {
    Picture picture(width, height);
    TestRandom random(seed);
    Pixel last = 0;
    for (Pixel& pixel : picture.pixels) {
        const std::uint32_t kind = random.below(16);
        std::uint32_t colour = random.next() & 0xFFFFFF;
        if (kind == 0) colour = 0x010101 * (colour & 0xFF);
        if (kind == 1) colour = (colour & 1) != 0 ? 0xFFFFFF : 0;
        const std::uint32_t alpha = random.below(4);
        pixel = colour | (alpha == 0 ? 0u : alpha == 1 ? 0xFFu : random.below(256)) << 24;
        if (kind == 2) pixel = last;
        last = pixel;
    }
    return picture;
}

/// random_picture() with every pixel opaque.
inline Picture random_opaque_picture(std::int32_t width, std::int32_t height, std::uint64_t seed) {
    Picture picture = random_picture(width, height, seed);
    for (Pixel& pixel : picture.pixels) pixel |= kOpaque;
    return picture;
}

/// Width and height pairs around the lengths of vectors and blocks, 1 x 1 among them.
inline std::vector<std::pair<std::int32_t, std::int32_t>> odd_sizes() {
    return {{1, 1},   {2, 1},  {1, 2},  {3, 2},   {7, 5},   {1, 67},  {67, 1},   {15, 16},
            {16, 16}, {17, 3}, {31, 9}, {33, 33}, {64, 65}, {127, 3}, {129, 40}, {211, 97}};
}

/// Whether two pictures are equal, to the bit or with each channel off by so much; says where they differ
/// first.
inline ::testing::AssertionResult same_pixels(ConstPixelBuffer expected, ConstPixelBuffer actual,
                                              int tolerance = 0) {
    const auto is_close = [=](Pixel a, Pixel b) {
        bool close = true;
        for (int shift = 0; shift < 32; shift += 8)
            close &= std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)) <=
                     tolerance;
        return close;
    };
    if (expected.width != actual.width || expected.height != actual.height) {
        return ::testing::AssertionFailure()
               << "sizes differ: expected " << expected.width << " x " << expected.height << ", got "
               << actual.width << " x " << actual.height;
    }
    for (std::size_t i = 0; i < expected.count(); ++i) {
        if (expected.data[i] == actual.data[i] || is_close(expected.data[i], actual.data[i])) continue;
        char values[64];
        std::snprintf(values, sizeof values, "expected %08X, got %08X", expected.data[i], actual.data[i]);
        const auto width = static_cast<std::size_t>(expected.width);
        return ::testing::AssertionFailure() << values << " at (" << i % width << ", " << i / width << ") of "
                                             << expected.width << " x " << expected.height;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace pixvane::test
