// The smallest and largest bytes over squares, a row at a time, at a cost that hardly depends on their size.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_WINDOW_RANGES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_WINDOW_RANGES_INL_H_
#undef PIXVANE_FILTERS_WINDOW_RANGES_INL_H_
#else
#define PIXVANE_FILTERS_WINDOW_RANGES_INL_H_
#endif

#include "filters/area/area_plain.h"
#include "filters/area/band_scratch.h"
#include "filters/area/neighbours-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Of each byte of some pixels.
struct LowHigh {
    ByteVec low, high;
};

HWY_INLINE LowHigh joined(const LowHigh& a, const LowHigh& b) {
    return {hn::Min(a.low, b.low), hn::Max(a.high, b.high)};
}

HWY_INLINE LowHigh low_high_of(PixelVec pixels) {
    const ByteVec bytes = hn::BitCast(ByteTag(), pixels);
    return {bytes, bytes};
}

// The smallest of the ranges of blue, green and red, in each lane.
HWY_INLINE IntVec smallest_range_lanes(const LowHigh& values) {
    const ByteTag bytes;
    const PixelTag d;
    const ByteVec range = hn::Sub(values.high, values.low);
    const PixelVec lanes = hn::BitCast(d, range);
    const ByteVec green = hn::BitCast(bytes, hn::ShiftRight<8>(lanes));
    const ByteVec red = hn::BitCast(bytes, hn::ShiftRight<16>(lanes));
    return hn::BitCast(IntTag(), blue_lanes(hn::BitCast(d, hn::Min(range, hn::Min(green, red)))));
}

// A row of lows and one of highs.
struct LowHighRow {
    Pixel* low = nullptr;
    Pixel* high = nullptr;

    HWY_INLINE LowHigh at(std::int32_t x) const {
        const PixelTag d;
        return {hn::BitCast(ByteTag(), hn::LoadU(d, low + x)),
                hn::BitCast(ByteTag(), hn::LoadU(d, high + x))};
    }
    HWY_INLINE void put(std::int32_t x, const LowHigh& values) const {
        const PixelTag d;
        hn::StoreU(hn::BitCast(d, values.low), d, low + x);
        hn::StoreU(hn::BitCast(d, values.high), d, high + x);
    }
};

// What was put together from two windows that begin `step` apart.
struct LowHighWindows {
    LowHighRow row;
    std::int32_t step;
    HWY_INLINE LowHigh at(std::int32_t x) const { return joined(row.at(x), row.at(x + step)); }
};

// Columns: the rows are taken in blocks as long as the window. A window is the end of one block, known from
// going up through the block once, and the start of the next, known from going down with the windows. Along a
// row windows are put together from two of the largest power of two in them, and those by doubling.
class WindowRanges {
public:
    static std::size_t scratch(std::int32_t width, std::int32_t rows, std::int32_t radius) {
        return 2 * filters::ScratchCutter::bytes<Pixel>(length(width, radius)) +
               2 * filters::ScratchCutter::bytes<Pixel>(stride(width)) +
               2 * filters::ScratchCutter::bytes<Pixel>(stride(width) * kept_rows(rows, radius));
    }

    WindowRanges(ConstPixelBuffer source, std::int32_t rows, std::int32_t radius,
                 filters::ScratchCutter& cutter)
        : source_(source),
          // A window that is wider than the picture on both sides is not made larger by being even wider.
          radiusX_(std::min(radius, source.width - 1)),
          radiusY_(std::min(radius, source.height - 1)) {
        for (Pixel** row : {&line_.low, &line_.high})
            *row = cutter.cut<Pixel>(length(source.width, radius)) + lead(source.width, radius);
        for (Pixel** row : {&starts_.low, &starts_.high}) *row = cutter.cut<Pixel>(stride(source.width));
        for (Pixel** row : {&ends_.low, &ends_.high})
            *row = cutter.cut<Pixel>(stride(source.width) * kept_rows(rows, radius));
    }

    // For windows around rows first..last in their order.
    void start(std::int32_t first, std::int32_t last) {
        top_ = first - radiusY_;
        rows_ = last - first;
        place_ = 0;
    }

    // The windows around the next row, from x = 0 on, in whole vectors.
    LowHighWindows next() {
        const std::int32_t block = 2 * radiusY_ + 1;
        if (place_ == 0) go_up(block);
        const Pixel* row = place_ == 0 ? nullptr : source_row(top_ + block + place_ - 1);
        const LowHighRow ends = ends_of(place_);
        for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
            LowHigh values = ends.at(x);
            if (row != nullptr) {
                LowHigh start = low_high_of(load_tail(row, x));
                if (place_ > 1) start = joined(start, starts_.at(x));
                starts_.put(x, start);
                values = joined(values, start);
            }
            line_.put(x, values);
        }
        if (++place_ == block) {
            place_ = 0;
            top_ += block;
            rows_ -= block;
        }
        const std::int32_t step = widen_line();
        return {{line_.low - radiusX_, line_.high - radiusX_}, step};
    }

private:
    static constexpr std::size_t kMostLanes = 16;

    static std::size_t stride(std::int32_t width) {
        return (static_cast<std::size_t>(width) + kMostLanes - 1) / kMostLanes * kMostLanes;
    }
    static std::size_t lead(std::int32_t width, std::int32_t radius) {
        return stride(std::min(radius, width));
    }
    static std::size_t length(std::int32_t width, std::int32_t radius) {
        return 2 * lead(width, radius) + stride(width) + 2 * kMostLanes;
    }
    // Of the windows' block only as many ends are kept as there are rows to be made.
    static std::size_t kept_rows(std::int32_t rows, std::int32_t radius) {
        return static_cast<std::size_t>(std::min<std::int64_t>(rows, 2 * std::int64_t{radius} + 1));
    }

    const Pixel* source_row(std::int32_t y) const { return source_.row(filters::inside(y, source_.height)); }

    LowHighRow ends_of(std::int32_t place) const {
        const std::size_t offset = stride(source_.width) * static_cast<std::size_t>(place);
        return {ends_.low + offset, ends_.high + offset};
    }

    HWY_INLINE PixelVec load_tail(const Pixel* row, std::int32_t x) const {
        if (x + lanes_of_pixels() <= source_.width) return hn::LoadU(PixelTag(), row + x);
        return load_repeating(row, source_.width, x);
    }

    // The ends of a block, from its last row up. Those that no row wants all go into the place of the last
    // one that is wanted.
    void go_up(std::int32_t block) {
        const std::int32_t kept = std::min(block, rows_);
        for (std::int32_t i = block - 1; i >= 0; --i) {
            const Pixel* row = source_row(top_ + i);
            const LowHighRow to = ends_of(std::min(i, kept - 1));
            const LowHighRow from = ends_of(std::min(i + 1, kept - 1));
            for (std::int32_t x = 0; x < source_.width; x += lanes_of_pixels()) {
                LowHigh values = low_high_of(load_tail(row, x));
                if (i < block - 1) values = joined(values, from.at(x));
                to.put(x, values);
            }
        }
    }

    // From single columns to windows that begin where they did, as large as a power of two can be. Returns
    // how much is missing.
    std::int32_t widen_line() const {
        const std::int32_t width = source_.width;
        for (Pixel* row : {line_.low, line_.high}) {
            std::fill_n(row - radiusX_, radiusX_, row[0]);
            std::fill_n(row + width, static_cast<std::size_t>(radiusX_) + kMostLanes, row[width - 1]);
        }
        const std::int32_t window = 2 * radiusX_ + 1;
        std::int32_t size = 1;
        for (; 2 * size <= window; size *= 2) {
            // Ascending, so that what lies ahead has not been widened yet.
            const std::int32_t end = width + radiusX_ - 2 * size + 1;
            for (std::int32_t x = -radiusX_; x < end; x += lanes_of_pixels())
                line_.put(x, joined(line_.at(x), line_.at(x + size)));
        }
        return window - size;
    }

    ConstPixelBuffer source_;
    std::int32_t radiusX_, radiusY_;
    std::int32_t top_ = 0;    // row of the picture where the block begins
    std::int32_t rows_ = 0;   // yet to be made, from the block's first on
    std::int32_t place_ = 0;  // of the next window in its block
    LowHighRow line_;         // with repeated ends
    LowHighRow starts_;
    LowHighRow ends_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
