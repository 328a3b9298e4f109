// Means over squares, at a cost that doesn't depend on their size.
// SPDX-License-Identifier: MIT
#include "filters/area.h"
#include "filters/area_plain.h"
#include "filters/band_scratch.h"

namespace pixvane::filters {
namespace {

using ColumnSums = Sums<std::uint32_t>;  // of at most 32,769 bytes

void add_row(ColumnSums* columns, const Pixel* row, std::int32_t width, std::uint32_t times) {
    for (std::int32_t x = 0; x < width; ++x) columns[x].add(row[x], times);
}

}  // namespace

void plain::box_mean(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean, std::int32_t first,
                     std::int32_t last, std::byte* scratch) {
    const std::int32_t width = source.width;
    const std::int32_t height = source.height;
    const std::int32_t radius = mean.radius;
    const std::int64_t side = 2 * std::int64_t{radius} + 1;
    const std::int64_t weightSum = side * side - 1 + mean.centreWeight;
    ColumnSums* columns = ScratchCutter(scratch).cut<ColumnSums>(static_cast<std::size_t>(width));

    std::fill_n(columns, width, ColumnSums{});
    const Window rows(first, radius, height);
    for (std::int32_t y = rows.first; y <= rows.last; ++y) add_row(columns, source.row(y), width, 1);
    add_row(columns, source.row(0), width, static_cast<std::uint32_t>(rows.beforeFirst));
    add_row(columns, source.row(height - 1), width, static_cast<std::uint32_t>(rows.afterLast));

    for (std::int32_t y = first; y < last; ++y) {
        Sums<std::int64_t> box;
        const Window window(0, radius, width);
        for (std::int32_t x = window.first; x <= window.last; ++x) box.add(columns[x]);
        box.add(columns[0], window.beforeFirst);
        box.add(columns[width - 1], window.afterLast);
        for (std::int32_t x = 0; x < width; ++x) {
            Sums<std::int64_t> total = box;
            total.add(source.row(y)[x], std::int64_t{mean.centreWeight} - 1);
            target.row(y)[x] = weighted_pixel(total, weightSum);
            box.add(columns[inside(x + 1 + radius, width)]);
            box.add(columns[inside(x - radius, width)], -1);
        }
        add_row(columns, source.row(inside(y + 1 + radius, height)), width, 1);
        add_row(columns, source.row(inside(y - radius, height)), width, static_cast<std::uint32_t>(-1));
    }
}

void box_mean(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean, std::int32_t first,
              std::int32_t last, std::byte* scratch) {
    plain::box_mean(source, target, mean, first, last, scratch);
}

std::size_t box_mean_scratch(std::int32_t width, std::int32_t) {
    return ScratchCutter::bytes<ColumnSums>(static_cast<std::size_t>(width));
}

}  // namespace pixvane::filters
