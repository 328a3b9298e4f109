// Rows of the source that are brought near before they are needed; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_AHEAD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_AHEAD_INL_H_
#undef PIXVANE_CORE_SCALE_AHEAD_INL_H_
#else
#define PIXVANE_CORE_SCALE_AHEAD_INL_H_
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "core/scale.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// While row y of the target is made: fetches what the next row needs and this one does not, a part with each
// of the row's vectors. The processor foresees rows that follow on each other by itself, but too late: it
// begins anew at every page.
class RowsAhead {
public:
    RowsAhead(ConstPixelBuffer source, const Scaling& scaling, std::int32_t y) : pitch_(source.width) {
        const ScaleAxis& axis = scaling.y();
        const std::int32_t begin = scaling.x().begin(), end = scaling.x().end();
        if (y + 1 >= axis.count()) return;
        const std::int32_t first = axis.taps(y).first + axis.taps(y).count;
        rows_ = std::max(0, axis.taps(y + 1).first + axis.taps(y + 1).count - first);
        if (rows_ == 0) return;
        place_ = source.row(first) + begin;
        left_ = end - begin;
        constexpr auto kLanes = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));
        step_ = left_ / std::max(1, scaling.x().count() / kLanes) + 1;
    }
    HWY_INLINE void fetch() {
        due_ = std::min(due_ + step_, left_);
        for (; due_ > 0; due_ -= kLine, left_ -= kLine, place_ += kLine) {
            const Pixel* row = place_;
            for (std::int32_t i = 0; i < rows_; ++i, row += pitch_) fetch_line(row);
        }
    }

private:
    static constexpr std::int32_t kLine = static_cast<std::int32_t>(kLinePixels);
    std::ptrdiff_t pitch_;
    const Pixel* place_ = nullptr;
    std::int32_t rows_ = 0;
    std::int32_t left_ = 0;  // pixels of each row that are still to be fetched
    std::int32_t due_ = 0;   // and of these, with this vector
    std::int32_t step_ = 0;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
