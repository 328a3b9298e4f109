// Means over squares, at a cost that doesn't depend on their size.
// SPDX-License-Identifier: MIT
#include "filters/area/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/area/box_mean.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/area/area_plain.h"
#include "filters/area/band_scratch.h"
#include "filters/area/weighted_rows-inl.h"

#if HWY_ONCE
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

namespace {

std::size_t plain_scratch(std::int32_t width) {
    return ScratchCutter::bytes<ColumnSums>(static_cast<std::size_t>(width));
}

}  // namespace
}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

std::size_t mean_row_pixels(std::int32_t width) { return static_cast<std::size_t>(width) + 16; }

// Each row is made in the caches, whole vectors of it, and goes from there to the target.
template <class Rows>
HWY_INLINE void make_means(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean,
                           std::int32_t first, std::int32_t last, std::byte* scratch) {
    ScratchCutter cutter(scratch);
    Pixel* row = cutter.cut<Pixel>(mean_row_pixels(source.width));
    Rows rows(source, mean, cutter);
    rows.start(first);
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y) {
        rows.make(y, row);
        copy_run(row, target.row(y), static_cast<std::size_t>(target.width), streaming);
    }
    if (streaming) hwy::FlushStream();
}

void box_mean(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean, std::int32_t first,
              std::int32_t last, std::byte* scratch) {
    if (mean.centreWeight != 1) {
        if (SmallWeightedRows::serves(mean)) {
            make_means<SmallWeightedRows>(source, target, mean, first, last, scratch);
        } else if (NarrowWeightedRows::serves(mean)) {
            make_means<NarrowWeightedRows>(source, target, mean, first, last, scratch);
        } else {
            make_means<WideBoxRows<true>>(source, target, mean, first, last, scratch);
        }
        return;
    }
    use_box_rows(mean.radius, [&](auto rows) HWY_ATTR {
        make_means<typename decltype(rows)::type>(source, target, mean, first, last, scratch);
    });
}

std::size_t box_mean_fast_scratch(std::int32_t width) {
    return ScratchCutter::bytes<Pixel>(mean_row_pixels(width)) + box_rows_scratch(width);
}
#else
using plain::box_mean;
std::size_t box_mean_fast_scratch(std::int32_t) { return 0; }
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(box_mean);
HWY_EXPORT(box_mean_fast_scratch);

void box_mean(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean, std::int32_t first,
              std::int32_t last, std::byte* scratch) {
    pick_kernel(plain::box_mean, HWY_DYNAMIC_DISPATCH(box_mean))(source, target, mean, first, last, scratch);
}

std::size_t box_mean_scratch(std::int32_t width) {
    return std::max(plain_scratch(width), HWY_DYNAMIC_DISPATCH(box_mean_fast_scratch)(width));
}

}  // namespace pixvane::filters
#endif
