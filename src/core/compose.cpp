// Whole-picture fills, copies and compositions.
// SPDX-License-Identifier: MIT
#include "core/compose.h"

#include <algorithm>

#include "core/pixel_rows.h"
#include "core/streaming.h"

namespace pixvane {
namespace {

/// The part of a row of `length` pixels placed at `start` that falls on 0..limit.
struct Clip {
    std::int32_t first;  // in the row
    std::int32_t count;
};

Clip clip(std::int32_t start, std::int32_t length, std::int32_t limit) {
    if (length <= 0) return {0, 0};
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

void fill(PixelBuffer target, Pixel value) {
    const bool streaming = target.bytes() >= kStreamingBytes;
    fill_row(target.data, target.count(), value, streaming);
    finish_rows(streaming);
}

void fill_area(PixelBuffer target, PixelRect area, Pixel value) {
    const Clip columns = clip(area.x, area.width, target.width);
    const Clip rows = clip(area.y, area.height, target.height);
    auto count = static_cast<std::size_t>(columns.count);
    std::int32_t runs = rows.count;
    if (count == 0 || runs == 0) return;
    // Strips of a large target are not read again from the caches either.
    const bool streaming = target.bytes() >= kStreamingBytes;
    Pixel* to = target.row(area.y + rows.first) + (area.x + columns.first);
    if (columns.count == target.width) {
        count *= static_cast<std::size_t>(runs);
        runs = 1;
    }
    const auto pitch = static_cast<std::size_t>(target.width);
    for (std::size_t i = 0; i < static_cast<std::size_t>(runs); ++i)
        fill_row(to + i * pitch, count, value, streaming);
    finish_rows(streaming);
}

void copy(PixelBuffer target, ConstPixelBuffer source) {
    const bool streaming = target.bytes() >= kStreamingBytes;
    copy_row(target.data, source.data, target.count(), streaming);
    finish_rows(streaming);
}

void draw_over(PixelBuffer target, ConstPixelBuffer source, std::int32_t x, std::int32_t y) {
    const Clip columns = clip(x, source.width, target.width);
    const Clip rows = clip(y, source.height, target.height);
    for (std::int32_t i = 0; columns.count > 0 && i < rows.count; ++i) {
        const Pixel* from = source.row(rows.first + i) + columns.first;
        Pixel* to = target.row(y + rows.first + i) + (x + columns.first);
        blend_row(to, from, static_cast<std::size_t>(columns.count));
    }
}

void flatten(PixelBuffer target, ConstPixelBuffer source, Pixel background) {
    const bool streaming = target.bytes() >= kStreamingBytes;
    flatten_row(target.data, source.data, target.count(), background, streaming);
    finish_rows(streaming);
}

void place(PixelBuffer target, ConstPixelBuffer source, std::int32_t x, std::int32_t y, Pixel background) {
    const bool streaming = target.bytes() >= kStreamingBytes;
    const Clip columns = clip(x, source.width, target.width);
    const Clip rows = clip(y, source.height, target.height);
    if (columns.count == 0 || rows.count == 0) {
        fill(target, background);
        return;
    }
    const auto width = static_cast<std::size_t>(target.width);
    const auto left = static_cast<std::size_t>(x + columns.first);
    const auto count = static_cast<std::size_t>(columns.count);
    const std::int32_t top = y + rows.first;
    // From the end of one row of the source to the start of the next one is one run of the background.
    Pixel* to = target.data;
    std::size_t gap = static_cast<std::size_t>(top) * width + left;
    for (std::int32_t i = 0; i < rows.count; ++i) {
        fill_row(to, gap, background, streaming);
        to += gap;
        flatten_row(to, source.row(rows.first + i) + columns.first, count, background, streaming);
        to += count;
        gap = width - count;
    }
    fill_row(to, static_cast<std::size_t>(target.data + target.count() - to), background, streaming);
    finish_rows(streaming);
}

}  // namespace pixvane
