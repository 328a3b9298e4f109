// The median of larger windows by histograms of their columns, at a cost that hardly grows with the radius.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/median_histograms.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/pixel_runs-inl.h"
#include "filters/effects/median_bytes-inl.h"
#include "filters/effects/median_versions.h"
#include "filters/effects/median_words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

template <class Columns, class Medians>
HWY_NOINLINE bool run_strips(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                             std::int32_t first, std::int32_t last) {
    // What fits the second cache, but wider than the window, which every row of a strip starts with.
    const std::int32_t wanted = std::max(480, 2 * radius);
    const std::int32_t strips = (source.width + wanted - 1) / wanted;
    const std::int32_t width = (source.width + strips - 1) / strips;
    Columns columns(source, radius, width);
    Medians medians(columns, radius, width);
    if (!columns.is_valid() || !medians.is_valid()) return false;
    for (std::int32_t left = 0; left < source.width; left += width) {
        const std::int32_t count = std::min(width, source.width - left);
        columns.start(left, count, first);
        for (std::int32_t y = first; y < last; ++y) {
            if (y > first) columns.move_down(y);
            medians.choose(target.row(y) + left, count);
        }
    }
    return true;
}

bool median_by_histograms(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                          std::int32_t first, std::int32_t last) {
    if (radius <= 63) return run_strips<ByteColumns, ByteMedians<true>>(source, target, radius, first, last);
    if (radius <= ByteColumns::kLargestRadius)
        return run_strips<ByteColumns, ByteMedians<false>>(source, target, radius, first, last);
    return run_strips<WordColumns, WordMedians>(source, target, radius, first, last);
}
#else
bool median_by_histograms(ConstPixelBuffer, PixelBuffer, std::int32_t, std::int32_t, std::int32_t) {
    return false;
}
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(median_by_histograms);

bool median_by_histograms(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                          std::int32_t first, std::int32_t last) {
    return HWY_DYNAMIC_DISPATCH(median_by_histograms)(source, target, radius, first, last);
}

}  // namespace pixvane::filters
#endif
