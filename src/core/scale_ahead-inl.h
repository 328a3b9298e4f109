// Rows of the source that are brought near before they are needed; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_AHEAD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_AHEAD_INL_H_
#undef PIXVANE_CORE_SCALE_AHEAD_INL_H_
#else
#define PIXVANE_CORE_SCALE_AHEAD_INL_H_
#endif

#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "core/scale.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// While row y of the target is made: fetches what the next row needs and this one does not, in as many steps
// as the row has vectors.
class RowsAhead {
public:
    RowsAhead(ConstPixelBuffer source, const Scaling& scaling, std::int32_t y)
        : source_(source), begin_(scaling.x().begin()), end_(scaling.x().end()) {
        const ScaleAxis& axis = scaling.y();
        if (y + 1 >= axis.count()) return;
        row_ = axis.taps(y).first + axis.taps(y).count;
        lastRow_ = axis.taps(y + 1).first + axis.taps(y + 1).count;
        const std::int32_t steps = scaling.x().count() / static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));
        const std::int32_t lines = (end_ - begin_) / kLine + 1;
        if (row_ < lastRow_) step_ = (lastRow_ - row_) * lines / std::max(1, steps) + 1;
        column_ = begin_;
    }
    HWY_INLINE void fetch() {
        for (std::int32_t i = 0; i < step_ && row_ < lastRow_; ++i) {
            fetch_line(source_.row(row_) + column_);
            column_ += kLine;
            if (column_ < end_) continue;
            column_ = begin_;
            ++row_;
        }
    }

private:
    static constexpr std::int32_t kLine = static_cast<std::int32_t>(kLinePixels);
    ConstPixelBuffer source_;
    std::int32_t begin_;
    std::int32_t end_;
    std::int32_t row_ = 0;
    std::int32_t lastRow_ = 0;
    std::int32_t column_ = 0;
    std::int32_t step_ = 0;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
