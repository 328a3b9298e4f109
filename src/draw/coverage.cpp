// Blending where a shape covers pixels only in part.
// SPDX-License-Identifier: MIT
#include "draw/coverage.h"

#include <algorithm>
#include <cstring>

#include "core/pixel_rows.h"

namespace pixvane {
namespace {

std::uint64_t eight(const std::uint8_t* coverage) {
    std::uint64_t bits;
    std::memcpy(&bits, coverage, sizeof bits);
    return bits;
}

/// How many of the first values are `value`, in steps of eight but for the end.
std::size_t run_of(const std::uint8_t* coverage, std::size_t count, std::uint8_t value) {
    const std::uint64_t all = value * 0x0101010101010101u;
    std::size_t i = 0;
    while (i + 8 <= count && eight(coverage + i) == all) i += 8;
    while (i < count && coverage[i] == value) ++i;
    return i;
}

/// One row of a mask; `color` is given where all of `from` is that, and opaque.
void cover_row(Pixel* to, const std::uint8_t* coverage, std::size_t count, const Pixel* from,
               const Pixel* color) {
    std::size_t i = 0;
    while (i < count) {
        // Most of a mask is nothing, or all.
        i += run_of(coverage + i, count - i, 0);
        const std::size_t whole = run_of(coverage + i, count - i, 255);
        if (whole > 0 && color != nullptr) {
            std::fill_n(to + i, whole, *color);
        } else if (whole > 0) {
            blend_row(to + i, from + i, whole);
        }
        for (i += whole; i < count && coverage[i] != 0 && coverage[i] != 255; ++i)
            to[i] = cover(to[i], from[i], coverage[i]);
    }
}

Pixel* row_of(DrawScratch& scratch, std::int32_t count) {
    if (scratch.row.size() < static_cast<std::size_t>(count))
        scratch.row.resize(static_cast<std::size_t>(count));
    return scratch.row.data();
}

}  // namespace

PixelRect intersection(PixelRect a, PixelRect b) {
    const std::int64_t left = std::max(a.x, b.x);
    const std::int64_t top = std::max(a.y, b.y);
    const std::int64_t right = std::min(std::int64_t{a.x} + a.width, std::int64_t{b.x} + b.width);
    const std::int64_t bottom = std::min(std::int64_t{a.y} + a.height, std::int64_t{b.y} + b.height);
    if (right <= left || bottom <= top) return {};
    return {static_cast<std::int32_t>(left), static_cast<std::int32_t>(top),
            static_cast<std::int32_t>(right - left), static_cast<std::int32_t>(bottom - top)};
}

void blend_area(PixelBuffer target, PixelRect area, const Paint& paint, DrawScratch& scratch) {
    area = intersection(area, {0, 0, target.width, target.height});
    const auto count = static_cast<std::size_t>(area.width);
    const Pixel* solid = paint.solid();
    if (paint.is_nothing() || count == 0) return;
    Pixel* row = nullptr;
    if (solid == nullptr || alpha_of(*solid) != 255) row = row_of(scratch, area.width);
    if (solid != nullptr && row != nullptr) std::fill_n(row, count, *solid);
    for (std::int32_t y = area.y; y < area.y + area.height; ++y) {
        Pixel* to = target.row(y) + area.x;
        if (row == nullptr) {
            std::fill_n(to, count, *solid);
            continue;
        }
        if (solid == nullptr) paint.row(area.x, y, row, count);
        blend_row(to, row, count);
    }
}

void blend_mask(PixelBuffer target, const Mask& mask, const Paint& paint, DrawScratch& scratch) {
    if (mask.is_empty() || paint.is_nothing()) return;
    const PixelRect area = mask.area;
    const auto width = static_cast<std::size_t>(area.width);
    const Pixel* solid = paint.solid();
    Pixel* row = row_of(scratch, area.width);
    if (solid != nullptr) std::fill_n(row, width, *solid);
    const Pixel* opaque = solid != nullptr && alpha_of(*solid) == 255 ? solid : nullptr;
    for (std::int32_t y = 0; y < area.height; ++y) {
        const std::uint8_t* coverage = mask.row(y);
        const std::size_t first = run_of(coverage, width, 0);
        if (first == width) continue;
        std::size_t end = width;
        while (coverage[end - 1] == 0) --end;
        const std::int32_t x = area.x + static_cast<std::int32_t>(first);
        if (solid == nullptr) paint.row(x, area.y + y, row, end - first);
        cover_row(target.row(area.y + y) + x, coverage + first, end - first, row, opaque);
    }
}

}  // namespace pixvane
