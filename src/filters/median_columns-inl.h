// Histograms of the columns of a window that goes down a picture; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_COLUMNS_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_COLUMNS_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_COLUMNS_INL_H_
#endif

#include <hwy/aligned_allocator.h>

#include <algorithm>
#include <cstdint>

#include "core/pixel_runs-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// The values of a channel in 16 segments of 16. Each list of 16 counts is cumulative: an entry counts itself
// and those before it, so that a place is found by one comparison of all.
constexpr std::size_t kEntries = 16;
constexpr std::size_t kSegments = 16;
constexpr std::size_t kChannels = 3;
// The lists of segments of all channels, blue first, lie together and fill a line of the cache.
constexpr std::size_t kCoarseEntries = 4 * kSegments;

template <class Count>
HWY_INLINE void add(Count* counts, const Count* added) {
    const hn::CappedTag<Count, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
        hn::Store(hn::Add(hn::Load(d, counts + i), hn::Load(d, added + i)), d, counts + i);
}

template <class Count>
HWY_INLINE void take(Count* counts, const Count* taken) {
    const hn::CappedTag<Count, kEntries> d;
    for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
        hn::Store(hn::Sub(hn::Load(d, counts + i), hn::Load(d, taken + i)), d, counts + i);
}

// What a value adds to the counts, by its place.
template <class Count>
struct Steps {
    HWY_ALIGN Count of[kEntries][kEntries];

    explicit Steps(std::uint32_t times) {
        for (std::size_t place = 0; place < kEntries; ++place) {
            for (std::size_t i = 0; i < kEntries; ++i)
                of[place][i] = static_cast<Count>(i >= place ? times : 0);
        }
    }
};

// For each byte of the lists of segments: the channel that it belongs to, and the largest value that it
// counts.
struct CoarseBytes {
    alignas(64) std::uint8_t channels[kCoarseEntries];
    alignas(64) std::uint8_t limits[kCoarseEntries];
    constexpr CoarseBytes() : channels(), limits() {
        for (std::size_t i = 0; i < kCoarseEntries; ++i) {
            channels[i] = static_cast<std::uint8_t>(i / kSegments);
            limits[i] = static_cast<std::uint8_t>(i % kSegments * kEntries + kEntries - 1);
        }
    }
};

// The pixels of 2 radius + 1 rows, column by column, of a strip of a picture and of `radius` columns on
// either side. `Count` counts the pixels of a column. Columns beyond the picture's ends, which repeat its
// edges, are kept like others if they are few: then windows need not mind the ends.
template <class Count>
class ColumnHistograms {
public:
    static constexpr bool kKeepsBeyond = sizeof(Count) == 1;

    // Of strips up to `width` columns wide; is_valid() tells whether there was memory for it.
    ColumnHistograms(ConstPixelBuffer source, std::int32_t radius, std::int32_t width)
        : source_(source),
          radius_(radius),
          stride_(static_cast<std::size_t>(most_columns(source, radius, width)) * kEntries),
          once_(1) {
        coarse_ = hwy::AllocateAligned<Count>(stride_ / kEntries * kCoarseEntries);
        if (coarse_ == nullptr) return;
        fine_ = hwy::AllocateAligned<Count>(stride_ * kSegments * kChannels);
        pixels_ = hwy::AllocateAligned<Pixel>(2 * (stride_ / kEntries));
    }
    bool is_valid() const { return coarse_ != nullptr && fine_ != nullptr && pixels_ != nullptr; }

    // The strip of `width` columns from `left` on, around row y.
    void start(std::int32_t left, std::int32_t width, std::int32_t y) {
        left_ = left - radius_;
        first_ = kKeepsBeyond ? left_ : std::max(0, left_);
        const std::int32_t end = left + width + radius_;
        columns_ = static_cast<std::size_t>((kKeepsBeyond ? end : std::min(end, source_.width)) - first_);
        std::fill_n(coarse_.get(), columns_ * kCoarseEntries, Count{0});
        std::fill_n(fine_.get(), stride_ * kSegments * kChannels, Count{0});
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
        const Pixel* taken = row_of(std::max(0, y - 1 - radius_), pixels_.get());
        const Pixel* added =
            row_of(std::min(source_.height - 1, y + radius_), pixels_.get() + stride_ / kEntries);
        Count* coarse = coarse_.get();
        Count* fine = fine_.get();
        for (std::size_t x = 0; x < columns_; ++x, coarse += kCoarseEntries, fine += kEntries) {
            const Pixel in = added[x];
            const Pixel out = taken[x];
            change_segments(coarse, in, out);
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const std::size_t plus = in >> (8 * channel) & 0xFF;
                const std::size_t minus = out >> (8 * channel) & 0xFF;
                Count* column = fine + channel * kSegments * stride_;
                add(column + plus / kEntries * stride_, once_.of[plus % kEntries]);
                take(column + minus / kEntries * stride_, once_.of[minus % kEntries]);
            }
        }
    }

    // The place of a column's lists among those of all, x counted from `radius` columns before the strip.
    HWY_INLINE std::size_t place_of(std::ptrdiff_t x) const {
        if constexpr (kKeepsBeyond) return static_cast<std::size_t>(x);
        return std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, left_ + x - first_)),
                        columns_ - 1);
    }

    // The sums over the window of `side` columns from x on: of lists that lie `step` apart.
    template <class D>
    HWY_INLINE hn::Vec<D> window_sum(D d, const Count* lists, std::size_t step, std::ptrdiff_t x,
                                     std::int32_t side) const {
        const hn::Rebind<Count, D> counts;
        const Count* at = lists + place_of(x) * step;
        const Count* last = lists + place_of(x + side - 1) * step;
        auto sum = hn::Zero(d);
        for (const Count* list = at; list <= last; list += step)
            sum = hn::Add(sum, hn::PromoteTo(d, hn::LoadU(counts, list)));
        if constexpr (!kKeepsBeyond) {
            const auto more = [&](std::int32_t times, const Count* list) HWY_ATTR {
                if (times <= 0) return;
                const auto factor = hn::Set(d, static_cast<hn::TFromD<D>>(times));
                sum = hn::Add(sum, hn::Mul(factor, hn::PromoteTo(d, hn::LoadU(counts, list))));
            };
            more(first_ - (left_ + x), at);
            more(left_ + x + side - first_ - static_cast<std::int32_t>(columns_), last);
        }
        return sum;
    }

    // The lists of segments, kCoarseEntries for each column.
    const Count* coarse() const { return coarse_.get(); }
    // The lists of one segment, kEntries for each column.
    const Count* fine(std::size_t channel, std::size_t segment) const {
        return fine_.get() + (channel * kSegments + segment) * stride_;
    }

private:
    static std::int64_t most_columns(ConstPixelBuffer source, std::int32_t radius, std::int32_t width) {
        const std::int64_t columns = std::int64_t{width} + 2 * std::int64_t{radius};
        return kKeepsBeyond ? columns : std::min<std::int64_t>(columns, source.width);
    }

    // The pixels of all columns in row y, in `buffer` if the picture has not got them all.
    const Pixel* row_of(std::int32_t y, Pixel* buffer) const {
        const Pixel* row = source_.row(y);
        const auto count = static_cast<std::int32_t>(columns_);
        if (first_ >= 0 && first_ + count <= source_.width) return row + first_;
        for (std::int32_t x = 0; x < count; ++x)
            buffer[x] = row[std::clamp(first_ + x, 0, source_.width - 1)];
        return buffer;
    }

    void count_row(std::int32_t y, std::uint32_t times) {
        const Steps<Count> steps(times);
        const Pixel* row = row_of(y, pixels_.get());
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

    HWY_INLINE void change_segments(Count* counts, Pixel in, Pixel out) const {
        if constexpr (sizeof(Count) == 1) {
            static constexpr CoarseBytes kBytes;
            const ByteTag d;
            const auto one = hn::Set(d, 1);
            const auto all_in = hn::BitCast(d, hn::Set(PixelTag(), in));
            const auto all_out = hn::BitCast(d, hn::Set(PixelTag(), out));
            for (std::size_t i = 0; i < kChannels * kSegments; i += hn::Lanes(d)) {
                const auto channels = hn::Load(d, kBytes.channels + i);
                const auto limits = hn::Load(d, kBytes.limits + i);
                // 1 where a value is beyond what an entry counts.
                const auto beyond = [&](ByteVec values) {
                    return hn::Min(hn::SaturatedSub(hn::TableLookupBytes(values, channels), limits), one);
                };
                const auto gain = hn::Sub(beyond(all_out), beyond(all_in));
                hn::Store(hn::Add(hn::Load(d, counts + i), gain), d, counts + i);
            }
        } else {
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                Count* list = counts + channel * kSegments;
                add(list, once_.of[(in >> (8 * channel) & 0xFF) / kEntries]);
                take(list, once_.of[(out >> (8 * channel) & 0xFF) / kEntries]);
            }
        }
    }

    ConstPixelBuffer source_;
    std::int32_t radius_;
    std::size_t stride_;  // of the lists of one segment, for the widest strip
    Steps<Count> once_;
    std::int32_t left_ = 0;   // the picture's column where the first window begins
    std::int32_t first_ = 0;  // the first that is kept
    std::size_t columns_ = 0;
    hwy::AlignedFreeUniquePtr<Count[]> coarse_;
    hwy::AlignedFreeUniquePtr<Count[]> fine_;
    hwy::AlignedFreeUniquePtr<Pixel[]> pixels_;  // of two rows beyond the picture's ends
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
