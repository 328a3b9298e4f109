// Medians of windows whose columns are counted in words; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_WORDS_INL_H_
#endif

#include <algorithm>
#include <cstdint>

#include "filters/effects/median_word_columns-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

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
