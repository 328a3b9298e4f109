// The plain versions of the filters of areas: what the fast versions must equal to the bit.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "filters/area/area.h"

namespace pixvane::filters {

/// Whole numbers of each channel.
template <class T>
struct Sums {
    T blue = 0;
    T green = 0;
    T red = 0;

    void add(Pixel p, T times = 1) {
        blue += times * static_cast<T>(blue_of(p));
        green += times * static_cast<T>(green_of(p));
        red += times * static_cast<T>(red_of(p));
    }
    template <class U>
    void add(const Sums<U>& other, T times = 1) {
        blue += times * static_cast<T>(other.blue);
        green += times * static_cast<T>(other.green);
        red += times * static_cast<T>(other.red);
    }
};

/// The pixel of a weighted sum: divided by the sum of weights if that is not 0, clamped.
Pixel weighted_pixel(const Sums<std::int64_t>& total, std::int64_t weightSum);

/// The place in 0..count - 1 that stands for one outside.
constexpr std::int32_t inside(std::int64_t place, std::int32_t count) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(place, 0, count - 1));
}

/// How far the edge is repeated in a window of 2 radius + 1 places around one of 0..count - 1: the places
/// from `first` to `last` count once, and the outer ones as often again as is told.
struct Window {
    Window(std::int32_t centre, std::int32_t radius, std::int32_t count)
        : first(std::max(0, centre - radius)),
          last(std::min(count - 1, centre + radius)),
          beforeFirst(std::max(0, radius - centre)),
          afterLast(std::max(0, centre + radius - (count - 1))) {}
    std::int32_t first, last;
    std::int32_t beforeFirst, afterLast;
};

/// Rows first..last, of which those outside 0..height - 1 repeat the edges: `above` times the first row,
/// `below` times the last one.
struct RowRange {
    RowRange(std::int32_t from, std::int32_t to, std::int32_t height)
        : first(std::max(0, from)),
          last(std::min(height - 1, to)),
          above(std::max(0, std::min(0, to + 1) - from)),
          below(std::max(0, to - std::max(height - 1, from - 1))) {}
    std::int32_t first, last;
    std::int32_t above, below;
};

namespace plain {

void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last);
void box_mean(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean, std::int32_t first,
              std::int32_t last, std::byte* scratch);
void ring_blur(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights, std::int32_t first,
               std::int32_t last, std::byte* scratch);
void smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                std::int32_t first, std::int32_t last, std::byte* scratch);
void sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last);
void emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy, std::int32_t first,
            std::int32_t last);

}  // namespace plain
}  // namespace pixvane::filters
