// The median of larger windows by histograms of their columns, at a cost that hardly grows with the radius.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/median_histograms.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/pixel_runs-inl.h"
#include "filters/median_columns-inl.h"
#include "filters/median_versions.h"

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// Finds the medians of a row from the sums of the histograms of 2 radius + 1 columns, as the window goes
// along the row. `Sum` counts the pixels of a window.
template <class Count, class Sum>
class RowOfMedians {
public:
    RowOfMedians(const ColumnHistograms<Count>& columns, std::int32_t radius)
        : columns_(columns),
          radius_(radius),
          side_(2 * radius + 1),
          middle_(static_cast<Sum>(std::int64_t{side_} * side_ / 2)) {}

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
            const hn::Rebind<Count, CoarseTag> counts;
            const Count* out = columns_.coarse() + columns_.place_of(x - 1) * kCoarseEntries;
            const Count* in = columns_.coarse() + columns_.place_of(x - 1 + side_) * kCoarseEntries;
            for (std::size_t i = 0; i < kCoarseVectors; ++i) {
                const auto gain = hn::Sub(hn::PromoteTo(d, hn::LoadU(counts, in + i * hn::Lanes(d))),
                                          hn::PromoteTo(d, hn::LoadU(counts, out + i * hn::Lanes(d))));
                sums[i] = hn::Add(sums[i], gain);
                hn::Store(sums[i], d, coarse_ + i * hn::Lanes(d));
            }
        }
    }

private:
    using CoarseTag = hn::ScalableTag<Sum>;
    using CoarseVec = hn::Vec<CoarseTag>;
    static constexpr std::size_t kCoarseVectors =
        (kChannels * kSegments + hn::MaxLanes(CoarseTag()) - 1) / hn::MaxLanes(CoarseTag());
    using Tag = hn::CappedTag<Sum, kEntries>;

    // The sums of the segment that a channel's median lies in, around the present pixel, and those of others
    // around the pixel where it last was there.
    struct Channel {
        HWY_ALIGN Sum entries[kSegments][kEntries];
        std::ptrdiff_t places[kSegments];
        std::size_t segment;
        const Count* lists;  // of the segment
        const Sum* before;   // how many values lie in the segments before it
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
        const auto place = static_cast<Sum>(middle_ - *channel.before);
        return static_cast<std::uint32_t>(segment * kEntries + find(channel.entries[segment], place));
    }

    HWY_NOINLINE void enter(std::size_t number, std::size_t segment, std::ptrdiff_t x) {
        Channel& channel = channels_[number];
        if (channel.segment < kSegments) channel.places[channel.segment] = x - 1;
        channel.segment = segment;
        channel.lists = columns_.fine(number, segment);
        channel.before = segment > 0 ? coarse_ + number * kSegments + segment - 1 : &nothing_;
        Sum* entries = channel.entries[segment];
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
    HWY_INLINE void move_right(const Count* lists, std::ptrdiff_t x, Sum* sums) const {
        const Tag d;
        const hn::Rebind<Count, Tag> counts;
        const Count* out = lists + columns_.place_of(x - 1) * kEntries;
        const Count* in = lists + columns_.place_of(x - 1 + side_) * kEntries;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d)) {
            const auto gain = hn::Sub(hn::PromoteTo(d, hn::Load(counts, in + i)),
                                      hn::PromoteTo(d, hn::Load(counts, out + i)));
            hn::Store(hn::Add(hn::Load(d, sums + i), gain), d, sums + i);
        }
    }

    // How many entries are at most `place`: the index of the one that holds it.
    static HWY_INLINE std::size_t find(const Sum* sums, Sum place) {
        const Tag d;
        const auto places = hn::Set(d, place);
        std::size_t above = 0;
        for (std::size_t i = 0; i < kEntries; i += hn::Lanes(d))
            above += hn::CountTrue(d, hn::Gt(hn::Load(d, sums + i), places));
        return kEntries - above;
    }

    const ColumnHistograms<Count>& columns_;
    std::int32_t radius_;
    std::ptrdiff_t side_;
    Sum middle_;
    Sum nothing_ = 0;
    HWY_ALIGN Sum coarse_[kCoarseEntries];
    Channel channels_[kChannels];
};

template <class Count, class Sum>
HWY_NOINLINE bool run_strips(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                             std::int32_t first, std::int32_t last) {
    // What fits the second cache, but wider than the window, which every row of a strip starts with.
    const std::int32_t wanted = std::max(480, 2 * radius);
    const std::int32_t strips = (source.width + wanted - 1) / wanted;
    const std::int32_t width = (source.width + strips - 1) / strips;
    ColumnHistograms<Count> columns(source, radius, width);
    if (!columns.is_valid()) return false;
    RowOfMedians<Count, Sum> medians(columns, radius);
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
    // The side of the window fits the smaller counts up to radius 127.
    return radius <= 127 ? run_strips<std::uint8_t, std::uint16_t>(source, target, radius, first, last)
                         : run_strips<std::uint16_t, std::uint32_t>(source, target, radius, first, last);
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
