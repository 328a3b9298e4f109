// Whole-picture fills, copies and compositions.
// SPDX-License-Identifier: MIT
#include "core/compose.h"

#include <algorithm>
#include <cstring>

namespace pixvane {
namespace {

/// The part of a row of `length` pixels placed at `start` that falls on 0..limit.
struct Clip {
    std::int32_t first;  // in the row
    std::int32_t count;
};

Clip clip(std::int32_t start, std::int32_t length, std::int32_t limit) {
    const std::int64_t first = std::max<std::int64_t>(0, -std::int64_t{start});
    const std::int64_t last = std::min<std::int64_t>(length, std::int64_t{limit} - start);
    return {static_cast<std::int32_t>(std::min<std::int64_t>(first, length)),
            static_cast<std::int32_t>(std::max<std::int64_t>(0, last - first))};
}

}  // namespace

Pixel source_over(Pixel destination, Pixel source) {
    const std::uint32_t s = alpha_of(source);
    if (s == 0) return destination;
    if (s == 255) return source;
    // Weights in units of 1 / (255 * 255).
    const std::uint32_t sourceWeight = s * 255;
    const std::uint32_t destinationWeight = alpha_of(destination) * (255 - s);
    const std::uint32_t total = sourceWeight + destinationWeight;
    const auto blend = [&](std::uint32_t from, std::uint32_t over) {
        return (2 * (sourceWeight * over + destinationWeight * from) + total) / (2 * total);
    };
    return make_pixel((2 * total + 255) / 510, blend(red_of(destination), red_of(source)),
                      blend(green_of(destination), green_of(source)),
                      blend(blue_of(destination), blue_of(source)));
}

void fill(PixelBuffer target, Pixel value) { std::fill_n(target.data, target.count(), value); }

void copy(PixelBuffer target, ConstPixelBuffer source) {
    std::memcpy(target.data, source.data, source.bytes());
}

void draw_over(PixelBuffer target, ConstPixelBuffer source, std::int32_t x, std::int32_t y) {
    const Clip columns = clip(x, source.width, target.width);
    const Clip rows = clip(y, source.height, target.height);
    for (std::int32_t i = 0; i < rows.count; ++i) {
        const Pixel* from = source.row(rows.first + i) + columns.first;
        Pixel* to = target.row(y + rows.first + i) + (x + columns.first);
        for (std::int32_t j = 0; j < columns.count; ++j) to[j] = source_over(to[j], from[j]);
    }
}

void flatten(PixelBuffer target, ConstPixelBuffer source, Pixel background) {
    place(target, source, 0, 0, background);
}

void place(PixelBuffer target, ConstPixelBuffer source, std::int32_t x, std::int32_t y, Pixel background) {
    fill(target, background);
    draw_over(target, source, x, y);
}

}  // namespace pixvane
