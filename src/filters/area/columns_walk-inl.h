// How sums over columns go down a picture, row by row; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_COLUMNS_WALK_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_COLUMNS_WALK_INL_H_
#undef PIXVANE_FILTERS_COLUMNS_WALK_INL_H_
#else
#define PIXVANE_FILTERS_COLUMNS_WALK_INL_H_
#endif

#include "filters/area/area_plain.h"
#include "filters/area/band_scratch.h"
#include "filters/area/neighbours-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Going down the rows of a picture with sums over 2 radius + 1 rows of every column. The first and the last
// column are repeated on either side `repeated` times, a multiple of the longest vector.
//
// `Sums` has exchange(in, out, x): pixels of the row on the way in and of the one on the way out for a vector
// of columns from x on; and repeat_ends().
template <class Sums>
class ColumnsWalk {
public:
    // Going down while a row is being made: what no window wants any more does so at once, when it is still
    // in the nearest cache.
    struct Descent {
        const Pixel* in;
        const Pixel* out;
        const Pixel* nextIn;
        const Pixel* nextOut;
        std::int32_t x = 0;  // the first column that has not gone down
    };
    // From around row y to around row y + 1.
    Descent descent(ConstPixelBuffer source, std::int32_t y) const {
        return {row_in(source, y), row_out(source, y), row_in(source, y + 1), row_out(source, y + 1)};
    }
    // Windows before x have been made. kFetches: the rows to come are brought near.
    template <bool kFetches = true>
    HWY_INLINE void follow(Descent& descent, std::int32_t x) {
        const PixelTag d;
        const std::int32_t lanes = lanes_of_pixels();
        for (; descent.x + lanes <= std::min(x - behind_, width_); descent.x += lanes) {
            if constexpr (kFetches) {
                fetch_line(descent.nextIn + descent.x);
                fetch_line(descent.nextOut + descent.x);
            }
            sums().exchange(hn::LoadU(d, descent.in + descent.x), hn::LoadU(d, descent.out + descent.x),
                            descent.x);
        }
    }
    // All windows have been made.
    template <bool kFetches = true>
    HWY_INLINE void finish(Descent& descent) {
        follow<kFetches>(descent, width_ + behind_);
        const std::int32_t x = descent.x;
        if (x < width_)
            sums().exchange(load_repeating(descent.in, width_, x), load_repeating(descent.out, width_, x), x);
        sums().repeat_ends();
    }
    // At once, for one of several windows around the same row: they share most of their rows, and fetching by
    // each costs a tenth.
    HWY_INLINE void go_down(ConstPixelBuffer source, std::int32_t y) {
        Descent whole = descent(source, y);
        finish<false>(whole);
    }

protected:
    ColumnsWalk(std::int32_t width, std::int32_t radius, std::int32_t repeated)
        : width_(width),
          radius_(radius),
          repeated_(repeated),
          ahead_(std::min(radius, width - 1)),
          behind_(std::min(radius + 1, width)) {}

    static constexpr std::int32_t kMostLanes = 16;

    // The first column of an array is aligned; the last vector may reach beyond what is repeated.
    static std::size_t length(std::int32_t width, std::int32_t repeated) {
        return static_cast<std::size_t>(width) + 2 * static_cast<std::size_t>(repeated) + kMostLanes;
    }
    std::uint32_t* cut_from(filters::ScratchCutter& cutter) const {
        return cutter.cut<std::uint32_t>(length(width_, repeated_)) + repeated_;
    }

    // add(pixels, x) for all vectors of a row.
    template <class Add>
    HWY_INLINE void for_vectors_of(const Pixel* row, const Add& add) const {
        const std::int32_t lanes = lanes_of_pixels();
        std::int32_t x = 0;
        for (; x + lanes <= width_; x += lanes) add(hn::LoadU(PixelTag(), row + x), x);
        if (x < width_) add(load_repeating(row, width_, x), x);
    }
    HWY_INLINE void repeat_ends_of(std::uint32_t* array) const {
        std::fill_n(array - repeated_, repeated_, array[0]);
        std::fill_n(array + width_, repeated_, array[width_ - 1]);
    }

    std::int32_t width_, radius_, repeated_;
    // How far from its middle a window's last column lies, and the last one of the window before it.
    std::int32_t ahead_, behind_;

private:
    Sums& sums() { return static_cast<Sums&>(*this); }
    const Pixel* row_in(ConstPixelBuffer source, std::int32_t y) const {
        return source.row(filters::inside(std::int64_t{y} + 1 + radius_, source.height));
    }
    const Pixel* row_out(ConstPixelBuffer source, std::int32_t y) const {
        return source.row(filters::inside(std::int64_t{y} - radius_, source.height));
    }
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
