// Medians of windows whose columns are counted in words; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_
#endif

#include <hwy/aligned_allocator.h>

#include <algorithm>
#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "filters/median_versions.h"

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

// Finds the medians of a row from the sums of the histograms of 2 radius + 1 columns, as the window goes
// along the row.
class WordMedians {
public:
    WordMedians(const WordColumns& columns, std::int32_t radius, std::int32_t)
        : columns_(columns),
          radius_(radius),
          side_(2 * radius + 1),
          middle_(static_cast<std::uint32_t>(std::int64_t{side_} * side_ / 2)) {}

    static bool is_valid() { return true; }

    HWY_INLINE void choose(Pixel* to, std::int32_t width) {
        start();
        const CoarseTag d;
        CoarseVec sums[kCoarseVectors];
        for (std::size_t i = 0; i < kCoarseVectors; ++i) sums[i] = hn::Load(d, coarse_ + i * hn::Lanes(d));
        for (std::ptrdiff_t x = 0;;) {
            const std::uint32_t blue = value(0, x);
            const std::uint32_t green = value(1, x);
            const std::uint32_t red = value(2, x);
            to[x] = make_pixel(0xFF, red, green, blue);
            if (++x == width) break;
            const hn::Rebind<std::uint16_t, CoarseTag> counts;
            const std::uint16_t* out = columns_.coarse() + columns_.place_of(x - 1) * kCoarseEntries;
            const std::uint16_t* in = columns_.coarse() + columns_.place_of(x - 1 + side_) * kCoarseEntries;
            for (std::size_t i = 0; i < kCoarseVectors; ++i) {
                const auto gain = hn::Sub(hn::PromoteTo(d, hn::LoadU(counts, in + i * hn::Lanes(d))),
                                          hn::PromoteTo(d, hn::LoadU(counts, out + i * hn::Lanes(d))));
                sums[i] = hn::Add(sums[i], gain);
                hn::Store(sums[i], d, coarse_ + i * hn::Lanes(d));
            }
        }
    }

private:
    using CoarseTag = hn::ScalableTag<std::uint32_t>;
    using CoarseVec = hn::Vec<CoarseTag>;
    static constexpr std::size_t kCoarseVectors =
        (kChannels * kSegments + hn::MaxLanes(CoarseTag()) - 1) / hn::MaxLanes(CoarseTag());
    using Tag = hn::CappedTag<std::uint32_t, kEntries>;

    // The sums of the segment that a channel's median lies in, around the present pixel, and those of others
    // around the pixel where it last was there.
    struct Channel {
        HWY_ALIGN std::uint32_t entries[kSegments][kEntries];
        std::ptrdiff_t places[kSegments];
        std::size_t segment;
        const std::uint16_t* lists;   // of the segment
        const std::uint32_t* before;  // how many values lie in the segments before it
    };

    void start() {
        const CoarseTag d;
        for (std::size_t i = 0; i < kCoarseEntries; i += hn::Lanes(d))
            hn::Store(columns_.window_sum(d, columns_.coarse() + i, kCoarseEntries, 0, side_), d,
                      coarse_ + i);
        for (Channel& channel : channels_) {
            std::fill_n(channel.places, kSegments, -1 - radius_);
            channel.segment = kSegments;
        }
    }

    // The median of a channel around pixel x.
    HWY_INLINE std::uint32_t value(std::size_t number, std::ptrdiff_t x) {
        Channel& channel = channels_[number];
        const std::size_t segment = find(coarse_ + number * kSegments, middle_);
        if (HWY_LIKELY(segment == channel.segment)) {
            move_right(channel.lists, x, channel.entries[segment]);
        } else {
            enter(number, segment, x);
        }
        const auto place = static_cast<std::uint32_t>(middle_ - *channel.before);
        return static_cast<std::uint32_t>(segment * kEntries + find(channel.entries[segment], place));
    }

    HWY_NOINLINE void enter(std::size_t number, std::size_t segment, std::ptrdiff_t x) {
        Channel& channel = channels_[number];
        if (channel.segment < kSegments) channel.places[channel.segment] = x - 1;
        channel.segment = segment;
        channel.lists = columns_.fine(number, segment);
        channel.before = segment > 0 ? coarse_ + number * kSegments + segment - 1 : &nothing_;
        std::uint32_t* entries = channel.entries[segment];
        const std::ptrdiff_t place = channel.places[segment];
        if (x - place > radius_) {
            const Tag d;
            for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
                hn::Store(columns_.window_sum(d, channel.lists + i, kEntries, x, side_), d, entries + i);
        } else {
            for (std::ptrdiff_t i = place + 1; i <= x; ++i) move_right(channel.lists, i, entries);
        }
    }

    // The sums around pixel x - 1 become those around x.
    HWY_INLINE void move_right(const std::uint16_t* lists, std::ptrdiff_t x, std::uint32_t* sums) const {
        const Tag d;
        const hn::Rebind<std::uint16_t, Tag> counts;
        const std::uint16_t* out = lists + columns_.place_of(x - 1) * kEntries;
        const std::uint16_t* in = lists + columns_.place_of(x - 1 + side_) * kEntries;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d)) {
            const auto gain = hn::Sub(hn::PromoteTo(d, hn::Load(counts, in + i)),
                                      hn::PromoteTo(d, hn::Load(counts, out + i)));
            hn::Store(hn::Add(hn::Load(d, sums + i), gain), d, sums + i);
        }
    }

    // How many entries are at most `place`: the index of the one that holds it.
    static HWY_INLINE std::size_t find(const std::uint32_t* sums, std::uint32_t place) {
        const Tag d;
        const auto places = hn::Set(d, place);
        std::size_t above = 0;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
            above += hn::CountTrue(d, hn::Gt(hn::Load(d, sums + i), places));
        return kEntries - above;
    }

    const WordColumns& columns_;
    std::int32_t radius_;
    std::ptrdiff_t side_;
    std::uint32_t middle_;
    std::uint32_t nothing_ = 0;
    HWY_ALIGN std::uint32_t coarse_[kCoarseEntries];
    Channel channels_[kChannels];
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
