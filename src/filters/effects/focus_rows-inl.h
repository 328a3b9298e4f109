// Rows of an effect around a point, span by span; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_FOCUS_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_FOCUS_ROWS_INL_H_
#undef PIXVANE_FILTERS_FOCUS_ROWS_INL_H_
#else
#define PIXVANE_FILTERS_FOCUS_ROWS_INL_H_
#endif

#include <algorithm>

#include "filters/adjust/luma-inl.h"
#include "filters/area/neighbours-inl.h"
#include "filters/effects/focus.h"
#include "filters/effects/focus_spans.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// distance() of the pixels from x on.
HWY_INLINE DoublePair distances(const filters::Focus& focus, std::int32_t x, std::int32_t y) {
    const DoubleTag d;
    const double dy = static_cast<double>(focus.y) - y;
    const DoubleVec square = hn::Set(d, dy * dy);
    const auto from = [&](std::int32_t place) HWY_ATTR {
        const DoubleVec dx = hn::Sub(hn::Set(d, focus.x), hn::Iota(d, place));
        return hn::Trunc(hn::Sqrt(hn::Add(hn::Mul(dx, dx), square)));
    };
    return {from(x), from(x + static_cast<std::int32_t>(hn::Lanes(d)))};
}

constexpr std::int32_t kFocusPiece = 512;

// Makes a row in pieces that stay in the nearest cache. kernel.start(left, right) is told of each piece that
// is not all near before it is made. kernel.keep(x, count, to) makes what is near; from
// kernel.change(x) and kernel.complete(x) come vectors of pixels from x on, of which those beyond their span
// are thrown away. Each piece is shown to finished(piece, x, count) before it goes to the target.
template <class Kernel, class Finished>
HWY_INLINE void make_focus_row(Kernel&& kernel, const filters::FocusSpans& spans, std::int32_t width,
                               Pixel* to, bool streaming, const Finished& finished) {
    const PixelTag d;
    HWY_ALIGN Pixel piece[kFocusPiece + hn::MaxLanes(PixelTag())];
    for (std::int32_t left = 0; left < width; left += kFocusPiece) {
        const std::int32_t right = std::min(width, left + kFocusPiece);
        const auto make = [&](std::int32_t first, std::int32_t last, const auto& vector) HWY_ATTR {
            for (std::int32_t x = std::max(first, left); x < std::min(last, right); x += lanes_of_pixels())
                hn::StoreU(vector(x), d, piece + (x - left));
        };
        const auto change = [&](std::int32_t x) HWY_ATTR { return kernel.change(x); };
        const auto complete = [&](std::int32_t x) HWY_ATTR { return kernel.complete(x); };
        if (left < spans.innerFirst || right > spans.innerLast) kernel.start(left, right);
        make(0, spans.outerFirst, complete);
        make(spans.outerFirst, spans.innerFirst, change);
        const std::int32_t first = std::max(spans.innerFirst, left);
        const std::int32_t last = std::min(spans.innerLast, right);
        if (first < last) kernel.keep(first, static_cast<std::size_t>(last - first), piece + (first - left));
        make(spans.innerLast, spans.outerLast, change);
        make(spans.outerLast, width, complete);
        const auto count = static_cast<std::size_t>(right - left);
        finished(piece, left, count);
        copy_run(piece, to + left, count, streaming);
    }
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
