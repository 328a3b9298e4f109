// Blending where a shape covers pixels only in part.
// SPDX-License-Identifier: MIT
#include "draw/coverage.h"

#include <algorithm>
#include <cstring>

#include "core/pixel_rows.h"

namespace pixvane {
namespace {

/// One row; `from` has the paint's pixels, or is null where `color` is all of them.
void cover_row(Pixel* to, const std::uint8_t* coverage, std::size_t count, const Pixel* from, Pixel color) {
    std::size_t i = 0;
    while (i < count) {
        // Most of a mask is nothing, or all: eight pixels are looked at together.
        std::uint64_t eight = 1;
        if (i + 8 <= count) std::memcpy(&eight, coverage + i, 8);
        if (eight == 0) {
            i += 8;
            continue;
        }
        if (eight == ~std::uint64_t{0} && alpha_of(color) == 255 && from == nullptr) {
            std::fill_n(to + i, 8, color);
            i += 8;
            continue;
        }
        for (const std::size_t end = std::min(i + 8, count); i < end; ++i)
            to[i] = cover(to[i], from == nullptr ? color : from[i], coverage[i]);
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
    const auto count = static_cast<std::size_t>(area.width);
    const Pixel* solid = paint.solid();
    Pixel* row = solid == nullptr ? row_of(scratch, area.width) : nullptr;
    for (std::int32_t y = 0; y < area.height; ++y) {
        if (row != nullptr) paint.row(area.x, area.y + y, row, count);
        cover_row(target.row(area.y + y) + area.x, mask.row(y), count, row, solid != nullptr ? *solid : 0);
    }
}

}  // namespace pixvane
