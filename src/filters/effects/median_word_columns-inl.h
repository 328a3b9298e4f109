// Histograms of the columns of windows, counted in words; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_WORD_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_WORD_COLUMNS_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_WORD_COLUMNS_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_WORD_COLUMNS_INL_H_
#endif

#include <hwy/aligned_allocator.h>

#include <algorithm>
#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "filters/effects/median_versions.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// Each list is cumulative: an entry counts itself and those before it, so that a place is found by one
// comparison of all.
// The lists of segments of all channels, blue first, lie together and fill a line of the cache.
constexpr std::size_t kCoarseEntries = 4 * kSegments;

HWY_INLINE void add(std::uint16_t* counts, const std::uint16_t* added) {
    const hn::CappedTag<std::uint16_t, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
        hn::Store(hn::Add(hn::Load(d, counts + i), hn::Load(d, added + i)), d, counts + i);
}

HWY_INLINE void take(std::uint16_t* counts, const std::uint16_t* taken) {
    const hn::CappedTag<std::uint16_t, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
        hn::Store(hn::Sub(hn::Load(d, counts + i), hn::Load(d, taken + i)), d, counts + i);
}

// What a value adds to the counts, by its place.
struct Steps {
    HWY_ALIGN std::uint16_t of[kEntries][kEntries];

    explicit Steps(std::uint32_t times) {
        for (std::size_t place = 0; place < kEntries; ++place) {
            for (std::size_t i = 0; i < kEntries; ++i)
                of[place][i] = static_cast<std::uint16_t>(i >= place ? times : 0);
        }
    }
};

// The pixels of 2 radius + 1 rows, column by column, of a strip of a picture and of what its windows reach.
// Columns beyond the picture's ends are not kept, as there may be far too many.
class WordColumns {
public:
    // Of strips up to `width` columns wide; is_valid() tells whether there was memory for it.
    WordColumns(ConstPixelBuffer source, std::int32_t radius, std::int32_t width)
        : source_(source),
          radius_(radius),
          stride_(static_cast<std::size_t>(most_columns(source, radius, width)) * kEntries),
          once_(1) {
        coarse_ = hwy::AllocateAligned<std::uint16_t>(stride_ / kEntries * kCoarseEntries);
        if (coarse_ == nullptr) return;
        fine_ = hwy::AllocateAligned<std::uint16_t>(stride_ * kSegments * kChannels);
    }
    bool is_valid() const { return coarse_ != nullptr && fine_ != nullptr; }

    // The strip of `width` columns from `left` on, around row y.
    void start(std::int32_t left, std::int32_t width, std::int32_t y) {
        left_ = left - radius_;
        first_ = std::max(0, left_);
        columns_ = static_cast<std::size_t>(std::min(left + width + radius_, source_.width) - first_);
        std::fill_n(coarse_.get(), columns_ * kCoarseEntries, std::uint16_t{0});
        std::fill_n(fine_.get(), stride_ * kSegments * kChannels, std::uint16_t{0});
        const std::int32_t top = std::max(0, y - radius_);
        const std::int32_t bottom = std::min(source_.height - 1, y + radius_);
        for (std::int32_t v = top; v <= bottom; ++v) {
            std::int32_t times = 1;
            if (v == 0) times += std::max(0, radius_ - y);
            if (v == source_.height - 1) times += std::max(0, y + radius_ - v);
            count_row(v, static_cast<std::uint32_t>(times));
        }
    }

    // From around row y - 1 to around row y.
    HWY_INLINE void move_down(std::int32_t y) {
        const Pixel* taken = source_.row(std::max(0, y - 1 - radius_)) + first_;
        const Pixel* added = source_.row(std::min(source_.height - 1, y + radius_)) + first_;
        std::uint16_t* coarse = coarse_.get();
        std::uint16_t* fine = fine_.get();
        for (std::size_t x = 0; x < columns_; ++x, coarse += kCoarseEntries, fine += kEntries) {
            const Pixel in = added[x];
            const Pixel out = taken[x];
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const std::size_t plus = in >> (8 * channel) & 0xFF;
                const std::size_t minus = out >> (8 * channel) & 0xFF;
                add(coarse + channel * kSegments, once_.of[plus / kEntries]);
                take(coarse + channel * kSegments, once_.of[minus / kEntries]);
                std::uint16_t* column = fine + channel * kSegments * stride_;
                add(column + plus / kEntries * stride_, once_.of[plus % kEntries]);
                take(column + minus / kEntries * stride_, once_.of[minus % kEntries]);
            }
        }
    }

    // The place of a column's lists among those of all, x counted from `radius` columns before the strip.
    HWY_INLINE std::size_t place_of(std::ptrdiff_t x) const {
        return std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, left_ + x - first_)),
                        columns_ - 1);
    }

    // The sums over the window of `side` columns from x on: of lists that lie `step` apart.
    template <class D>
    HWY_INLINE hn::Vec<D> window_sum(D d, const std::uint16_t* lists, std::size_t step, std::ptrdiff_t x,
                                     std::int32_t side) const {
        const hn::Rebind<std::uint16_t, D> counts;
        const std::uint16_t* at = lists + place_of(x) * step;
        const std::uint16_t* last = lists + place_of(x + side - 1) * step;
        auto sum = hn::Zero(d);
        for (const std::uint16_t* list = at; list <= last; list += step)
            sum = hn::Add(sum, hn::PromoteTo(d, hn::LoadU(counts, list)));
        const auto more = [&](std::int32_t times, const std::uint16_t* list) HWY_ATTR {
            if (times <= 0) return;
            const auto factor = hn::Set(d, static_cast<hn::TFromD<D>>(times));
            sum = hn::Add(sum, hn::Mul(factor, hn::PromoteTo(d, hn::LoadU(counts, list))));
        };
        more(first_ - (left_ + x), at);
        more(left_ + x + side - first_ - static_cast<std::int32_t>(columns_), last);
        return sum;
    }

    // The lists of segments, kCoarseEntries for each column.
    const std::uint16_t* coarse() const { return coarse_.get(); }
    // The lists of one segment, kEntries for each column.
    const std::uint16_t* fine(std::size_t channel, std::size_t segment) const {
        return fine_.get() + (channel * kSegments + segment) * stride_;
    }

private:
    static std::int64_t most_columns(ConstPixelBuffer source, std::int32_t radius, std::int32_t width) {
        const std::int64_t columns = std::int64_t{width} + 2 * std::int64_t{radius};
        return std::min<std::int64_t>(columns, source.width);
    }

    void count_row(std::int32_t y, std::uint32_t times) {
        const Steps steps(times);
        const Pixel* row = source_.row(y) + first_;
        for (std::size_t x = 0; x < columns_; ++x) {
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const std::size_t value = row[x] >> (8 * channel) & 0xFF;
                const std::size_t segment = value / kEntries;
                add(coarse_.get() + x * kCoarseEntries + channel * kSegments, steps.of[segment]);
                add(fine_.get() + (channel * kSegments + segment) * stride_ + x * kEntries,
                    steps.of[value % kEntries]);
            }
        }
    }

    ConstPixelBuffer source_;
    std::int32_t radius_;
    std::size_t stride_;  // of the lists of one segment, for the widest strip
    Steps once_;
    std::int32_t left_ = 0;   // the picture's column where the first window begins
    std::int32_t first_ = 0;  // the first that is kept
    std::size_t columns_ = 0;
    hwy::AlignedFreeUniquePtr<std::uint16_t[]> coarse_;
    hwy::AlignedFreeUniquePtr<std::uint16_t[]> fine_;
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
