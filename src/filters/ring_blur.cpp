// Blur with weights that depend on the ring around the centre.
// SPDX-License-Identifier: MIT
#include "filters/area.h"
#include "filters/area_plain.h"
#include "filters/band_scratch.h"

namespace pixvane::filters {
namespace {

using ColumnSums = Sums<std::uint32_t>;  // of at most 32,769 bytes
using Totals = Sums<std::int64_t>;

void add_row(ColumnSums* columns, const Pixel* row, std::int32_t width, std::uint32_t times) {
    for (std::int32_t x = 0; x < width; ++x) columns[x].add(row[x], times);
}

void sum_columns(ConstPixelBuffer source, ColumnSums* columns, std::int32_t y, std::int32_t radius) {
    const Window rows(y, radius, source.height);
    for (std::int32_t i = rows.first; i <= rows.last; ++i) add_row(columns, source.row(i), source.width, 1);
    add_row(columns, source.row(0), source.width, static_cast<std::uint32_t>(rows.beforeFirst));
    add_row(columns, source.row(source.height - 1), source.width, static_cast<std::uint32_t>(rows.afterLast));
}

// The sums of a box that slides along a row, weighted.
void add_boxes(const ColumnSums* columns, Totals* totals, std::int32_t width, const RingWeights::Box& box) {
    Totals sum;
    const Window window(0, box.radius, width);
    for (std::int32_t x = window.first; x <= window.last; ++x) sum.add(columns[x]);
    sum.add(columns[0], window.beforeFirst);
    sum.add(columns[width - 1], window.afterLast);
    for (std::int32_t x = 0; x < width; ++x) {
        totals[x].add(sum, box.weight);
        sum.add(columns[inside(x + 1 + box.radius, width)]);
        sum.add(columns[inside(x - box.radius, width)], -1);
    }
}

}  // namespace

void plain::ring_blur(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights,
                      std::int32_t first, std::int32_t last, std::byte* scratch) {
    const std::int32_t width = source.width;
    const auto count = static_cast<std::size_t>(width);
    ScratchCutter cutter(scratch);
    Totals* totals = cutter.cut<Totals>(count);
    ColumnSums* allColumns = cutter.cut<ColumnSums>(count * weights.boxes.size());

    std::fill_n(allColumns, count * weights.boxes.size(), ColumnSums{});
    ColumnSums* columns = allColumns;
    for (const RingWeights::Box& box : weights.boxes) {
        sum_columns(source, columns, first, box.radius);
        columns += width;
    }
    for (std::int32_t y = first; y < last; ++y) {
        std::fill_n(totals, count, Totals{});
        columns = allColumns;
        for (const RingWeights::Box& box : weights.boxes) {
            add_boxes(columns, totals, width, box);
            add_row(columns, source.row(inside(y + 1 + box.radius, source.height)), width, 1);
            add_row(columns, source.row(inside(y - box.radius, source.height)), width,
                    static_cast<std::uint32_t>(-1));
            columns += width;
        }
        for (std::int32_t x = 0; x < width; ++x) target.row(y)[x] = weighted_pixel(totals[x], weights.sum);
    }
}

void ring_blur(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights, std::int32_t first,
               std::int32_t last, std::byte* scratch) {
    plain::ring_blur(source, target, weights, first, last, scratch);
}

std::size_t ring_blur_scratch(std::int32_t width, const RingWeights& weights) {
    const auto count = static_cast<std::size_t>(width);
    return ScratchCutter::bytes<Totals>(count) +
           ScratchCutter::bytes<ColumnSums>(count * weights.boxes.size());
}

}  // namespace pixvane::filters
