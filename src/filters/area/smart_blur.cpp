// Blur where the local range is small.
// SPDX-License-Identifier: MIT
#include "filters/area/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/area/smart_blur.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/area/area_plain.h"
#include "filters/area/band_scratch.h"
#include "filters/area/box_rows-inl.h"
#include "filters/area/channel_spread.h"
#include "filters/area/window_ranges-inl.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                       std::int32_t first, std::int32_t last, std::byte* scratch) {
    plain::box_mean(source, target, {radius, 1}, first, last, scratch);
    PixelSpread* columns = ScratchCutter(scratch).cut<PixelSpread>(static_cast<std::size_t>(source.width));
    for (std::int32_t y = first; y < last; ++y) {
        std::fill_n(columns, source.width, PixelSpread{});
        const Window rows(y, radius, source.height);
        for (std::int32_t i = rows.first; i <= rows.last; ++i) {
            for (std::int32_t x = 0; x < source.width; ++x) columns[x].widen(source.row(i)[x]);
        }
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Window window(x, radius, source.width);
            PixelSpread spread;
            for (std::int32_t i = window.first; i <= window.last; ++i) spread.widen(columns[i]);
            if (spread.smallest() > level) target.row(y)[x] = source.row(y)[x];
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

template <class Rows>
HWY_INLINE void blur_where_even(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                                std::int32_t level, std::int32_t first, std::int32_t last,
                                std::byte* scratch) {
    ScratchCutter cutter(scratch);
    Pixel* row = cutter.cut<Pixel>(static_cast<std::size_t>(source.width) + 16);
    WindowRanges windows(source, last - first, radius, cutter);
    Rows rows(source, {radius, 1}, cutter);
    rows.start(first);
    windows.start(first, last);
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    const PixelTag d;
    const IntVec levels = hn::Set(IntTag(), level);
    for (std::int32_t y = first; y < last; ++y) {
        rows.make(y, row);
        const LowHighWindows ranges = windows.next();
        const Pixel* from = source.row(y);
        for (std::int32_t x = 0; x < source.width; x += lanes_of_pixels()) {
            const bool whole = x + lanes_of_pixels() <= source.width;
            const PixelVec kept = whole ? hn::LoadU(d, from + x) : load_repeating(from, source.width, x);
            const auto keeps = hn::RebindMask(d, hn::Gt(smallest_range_lanes(ranges.at(x)), levels));
            hn::StoreU(hn::IfThenElse(keeps, kept, hn::LoadU(d, row + x)), d, row + x);
        }
        copy_run(row, target.row(y), static_cast<std::size_t>(target.width), streaming);
    }
    if (streaming) hwy::FlushStream();
}

void smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                std::int32_t first, std::int32_t last, std::byte* scratch) {
    use_box_rows(radius, [&](auto rows) HWY_ATTR {
        blur_where_even<typename decltype(rows)::type>(source, target, radius, level, first, last, scratch);
    });
}

std::size_t smart_blur_fast_scratch(std::int32_t width, std::int32_t rows, std::int32_t radius) {
    return ScratchCutter::bytes<Pixel>(static_cast<std::size_t>(width) + 16) +
           WindowRanges::scratch(width, rows, radius) + box_rows_scratch(width);
}
#else
using plain::smart_blur;
std::size_t smart_blur_fast_scratch(std::int32_t, std::int32_t, std::int32_t) { return 0; }
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(smart_blur);
HWY_EXPORT(smart_blur_fast_scratch);

void smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                std::int32_t first, std::int32_t last, std::byte* scratch) {
    pick_kernel(plain::smart_blur, HWY_DYNAMIC_DISPATCH(smart_blur))(source, target, radius, level, first,
                                                                     last, scratch);
}

std::size_t smart_blur_scratch(std::int32_t width, std::int32_t rows, std::int32_t radius) {
    return std::max({box_mean_scratch(width),
                     ScratchCutter::bytes<PixelSpread>(static_cast<std::size_t>(width)),
                     HWY_DYNAMIC_DISPATCH(smart_blur_fast_scratch)(width, rows, radius)});
}

}  // namespace pixvane::filters
#endif
