// Blur with weights that depend on the ring around the centre.
// SPDX-License-Identifier: MIT
#include "filters/area/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/area/ring_blur.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <new>

#include "core/kernel_path.h"
#include "filters/area/area_plain.h"
#include "filters/area/band_scratch.h"
#include "filters/area/box_rows-inl.h"

#if HWY_ONCE
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

namespace {

std::size_t ring_plain_scratch(std::int32_t width, const RingWeights& weights) {
    const auto count = static_cast<std::size_t>(width);
    return ScratchCutter::bytes<Totals>(count) +
           ScratchCutter::bytes<ColumnSums>(count * weights.boxes.size());
}

}  // namespace
}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// The columns of all boxes. The weighted gains of the boxes add up to what the weighted sum gains from one
// pixel to the next, so there is one running sum for all of them.
template <class Columns>
class AllColumns {
public:
    static std::size_t scratch(std::int32_t width, const RingWeights& weights) {
        std::size_t bytes = ScratchCutter::bytes<Columns>(weights.boxes.size());
        return bytes + weights.boxes.size() * Columns::scratch(width);
    }

    AllColumns(std::int32_t width, const RingWeights& weights, ScratchCutter& cutter)
        : weights_(weights), columns_(cutter.cut<Columns>(weights.boxes.size())) {
        for (std::size_t i = 0; i < count(); ++i)
            new (columns_ + i) Columns(width, weights.boxes[i].radius, cutter);
    }

    std::size_t count() const { return weights_.boxes.size(); }
    const Columns& operator[](std::size_t i) const { return columns_[i]; }
    std::int64_t weight(std::size_t i) const { return weights_.boxes[i].weight; }

    void start(ConstPixelBuffer source, std::int32_t y) {
        columns_[0].start(source, y);
        for (std::size_t i = 1; i < count(); ++i) columns_[i].start(source, y, columns_[i - 1]);
    }
    void go_down(ConstPixelBuffer source, std::int32_t y) {
        for (std::size_t i = 0; i < count(); ++i) columns_[i].go_down(source, y);
    }
    ChannelTotals sum_before() const {
        ChannelTotals totals;
        for (std::size_t i = 0; i < count(); ++i) {
            const ChannelTotals box = columns_[i].sum_before();
            totals.add(weight(i), box.blue, box.green, box.red);
        }
        return totals;
    }

private:
    const RingWeights& weights_;
    Columns* columns_;
};

// To radius 63, where gains of columns fit 16 bits with their sign, and multiply in pairs.
class NarrowRings {
public:
    using Columns = AllColumns<NarrowColumns>;

    static bool serves(const RingWeights& weights) {
        for (const RingWeights::Box& box : weights.boxes)
            if (box.radius > 63 || box.weight > 32767) return false;
        return weights.sum <= ByteQuotient::kLargestDivisor;
    }

    NarrowRings(const Columns& columns, std::int64_t weightSum) : columns_(columns), quotient_(weightSum) {}

    HWY_INLINE ChannelLanes gain(std::int32_t x) const {
        const IntTag d;
        const SignedWordTag words;
        ChannelLanes gain{hn::Zero(d), hn::Zero(d), hn::Zero(d)};
        for (std::size_t i = 0; i < columns_.count(); ++i) {
            const IntVec weight = hn::Set(d, static_cast<std::int32_t>(columns_.weight(i)));
            const SignedWordVec lower = hn::BitCast(words, weight);
            const SignedWordVec upper = hn::BitCast(words, hn::ShiftLeft<16>(weight));
            const SignedWordVec blueRed = columns_[i].blue_red_gain(x);
            gain.blue = add_products(gain.blue, blueRed, lower);
            gain.red = add_products(gain.red, blueRed, upper);
            gain.green = add_products(gain.green, columns_[i].green_alpha_gain(x), lower);
        }
        return gain;
    }

    HWY_INLINE IntVec divided(IntVec total) const { return quotient_(total); }

private:
    const Columns& columns_;
    ByteQuotient quotient_;
};

// As long as weighted sums fit 31 bits.
class WideRings {
public:
    using Columns = AllColumns<WideColumns>;

    static bool serves(const RingWeights& weights) {
        return 255 * weights.sum <= std::numeric_limits<std::int32_t>::max();
    }

    WideRings(const Columns& columns, std::int64_t weightSum) : columns_(columns), quotient_(weightSum) {}

    HWY_INLINE ChannelLanes gain(std::int32_t x) const {
        const IntTag d;
        ChannelLanes sum{hn::Zero(d), hn::Zero(d), hn::Zero(d)};
        for (std::size_t i = 0; i < columns_.count(); ++i) {
            const IntVec weight = hn::Set(d, static_cast<std::int32_t>(columns_.weight(i)));
            const ChannelLanes gain = columns_[i].gain(x);
            sum.blue = hn::Add(sum.blue, hn::Mul(gain.blue, weight));
            sum.green = hn::Add(sum.green, hn::Mul(gain.green, weight));
            sum.red = hn::Add(sum.red, hn::Mul(gain.red, weight));
        }
        return sum;
    }

    HWY_INLINE IntVec divided(IntVec total) const { return quotient_(wide_lanes(total)); }

private:
    const Columns& columns_;
    WideQuotient quotient_;
};

template <class Rings>
HWY_INLINE void blur_by_rings(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights,
                              std::int32_t first, std::int32_t last, std::byte* scratch) {
    ScratchCutter cutter(scratch);
    Pixel* row = cutter.cut<Pixel>(static_cast<std::size_t>(source.width) + 16);
    typename Rings::Columns columns(source.width, weights, cutter);
    columns.start(source, first);
    const Rings rings(columns, weights.sum);
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y) {
        RunningSums sums(columns.sum_before());
        for (std::int32_t x = 0; x < source.width; x += lanes_of_pixels()) {
            const ChannelLanes totals = sums.next(rings.gain(x));
            hn::StoreU(pixels_of_channels(rings.divided(totals.blue), rings.divided(totals.green),
                                          rings.divided(totals.red)),
                       PixelTag(), row + x);
        }
        copy_run(row, target.row(y), static_cast<std::size_t>(target.width), streaming);
        columns.go_down(source, y);
    }
    if (streaming) hwy::FlushStream();
}

void ring_blur(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights, std::int32_t first,
               std::int32_t last, std::byte* scratch) {
    if (NarrowRings::serves(weights)) {
        blur_by_rings<NarrowRings>(source, target, weights, first, last, scratch);
    } else if (WideRings::serves(weights)) {
        blur_by_rings<WideRings>(source, target, weights, first, last, scratch);
    } else {
        plain::ring_blur(source, target, weights, first, last, scratch);
    }
}

std::size_t ring_fast_scratch(std::int32_t width, const RingWeights& weights) {
    return ScratchCutter::bytes<Pixel>(static_cast<std::size_t>(width) + 16) +
           std::max(NarrowRings::Columns::scratch(width, weights),
                    WideRings::Columns::scratch(width, weights));
}
#else
using plain::ring_blur;
std::size_t ring_fast_scratch(std::int32_t, const RingWeights&) { return 0; }
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(ring_blur);
HWY_EXPORT(ring_fast_scratch);

void ring_blur(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights, std::int32_t first,
               std::int32_t last, std::byte* scratch) {
    pick_kernel(plain::ring_blur, HWY_DYNAMIC_DISPATCH(ring_blur))(source, target, weights, first, last,
                                                                   scratch);
}

std::size_t ring_blur_scratch(std::int32_t width, const RingWeights& weights) {
    return std::max(ring_plain_scratch(width, weights),
                    HWY_DYNAMIC_DISPATCH(ring_fast_scratch)(width, weights));
}

}  // namespace pixvane::filters
#endif
