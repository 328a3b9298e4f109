// Medians of windows whose columns are counted in bytes; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_MEDIAN_BYTES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_MEDIAN_BYTES_INL_H_
#undef PIXVANE_FILTERS_MEDIAN_BYTES_INL_H_
#else
#define PIXVANE_FILTERS_MEDIAN_BYTES_INL_H_
#endif

#include <hwy/aligned_allocator.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "filters/effects/median_byte_columns-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// Finds the medians of rows as windows go along them: first the segments that they lie in, of all pixels,
// then the values, run by run of pixels in the same segment. So what a run begins with is known early, and
// the processor need not guess it for long.
template <bool kFitsSign>
class ByteMedians {
public:
    // Of rows up to `width` pixels wide.
    ByteMedians(const ByteColumns& columns, std::int32_t radius, std::int32_t width)
        : columns_(columns),
          side_(2 * std::ptrdiff_t{radius} + 1),
          middle_(static_cast<std::uint16_t>(side_ * side_ / 2)),
          length_((static_cast<std::size_t>(width) + 64) / 32 * 32),
          bits_(hwy::AllocateAligned<std::uint16_t>(2 * kChannels * length_)) {
        if (is_valid()) std::fill_n(bits_.get(), 2 * kChannels * length_, std::uint16_t{0});
    }
    bool is_valid() const { return bits_ != nullptr; }

    void choose(Pixel* to, std::int32_t width) {
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            find_segments(channel, width);
            find_values(channel, width);
        }
        write(to, static_cast<std::size_t>(width));
    }

private:
    using Gains = ListGains<kFitsSign>;

    // A column's lists of a segment. Its first entry counts the values of earlier segments, too, so that
    // cumulated ones count all up to a value.
    struct Segment {
        const std::uint8_t* coarse;
        const std::uint8_t* fine;
        ByteVec before;  // picks the entry for earlier segments

        Segment(const ByteColumns& columns, std::size_t channel, std::size_t index)
            : coarse(columns.coarse(channel)), fine(columns.fine(channel, index)) {
            alignas(16) std::uint8_t picked[kEntries];
            std::fill_n(picked, kEntries, std::uint8_t{0x80});
            if (index > 0) picked[0] = static_cast<std::uint8_t>(index - 1);
            before = hn::LoadDup128(ByteTag(), picked);
        }
        HWY_INLINE ByteVec lists(std::ptrdiff_t column) const {
            const ByteTag d;
            const std::ptrdiff_t offset = column * static_cast<std::ptrdiff_t>(kEntries);
            return hn::Add(hn::LoadU(d, fine + offset),
                           hn::TableLookupBytesOr0(hn::LoadU(d, coarse + offset), before));
        }
    };

    // The sums of a segment, around pixel `place`.
    struct Known {
        HWY_ALIGN std::uint16_t sums[kEntries];
        std::ptrdiff_t place;
    };

    // For each pixel a bit for each segment that reaches above the median, and for each value above it in
    // the segment that it lies in.
    std::uint16_t* segment_bits(std::size_t channel) const { return bits_.get() + channel * length_; }
    std::uint16_t* value_bits(std::size_t channel) const {
        return bits_.get() + (kChannels + channel) * length_;
    }

    void find_segments(std::size_t channel, std::ptrdiff_t width) const {
        const ByteTag d;
        const std::uint8_t* lists = columns_.coarse(channel);
        std::uint16_t* bits = segment_bits(channel);
        ListSums sums = ListSums::zero();
        for (std::ptrdiff_t x = 0; x < side_; x += kTogether) {
            const ByteVec more = first_blocks(hn::LoadU(d, lists + x * kStep), side_ - x);
            for_blocks([&](auto i) HWY_ATTR { sums.add(list_in<i>(more)); });
        }
        for (std::ptrdiff_t x = 0; x < width; x += kTogether) {
            const Gains gains(hn::LoadU(d, lists + (x + side_) * kStep), hn::LoadU(d, lists + x * kStep));
            for_blocks([&](auto i) HWY_ATTR {
                gains.template add_to<i>(sums);
                sums.store_above(middle_, bits + x + static_cast<std::ptrdiff_t>(i()));
            });
        }
        bits[width] = 0;  // unlike those of any pixel
    }

    // How many of the next pixels have these bits, as far as they are looked at together.
    static HWY_INLINE std::ptrdiff_t count_like(const std::uint16_t* next, std::uint16_t bits) {
        std::uint64_t four;
        std::memcpy(&four, next, sizeof four);
        four ^= bits * std::uint64_t{0x0001000100010001};
        return std::min<std::ptrdiff_t>(std::countr_zero(four) / 16, kTogether);
    }

    void find_values(std::size_t channel, std::ptrdiff_t width) {
        for (Known& known : known_) known.place = -side_;
        const std::uint16_t* segments = segment_bits(channel);
        std::uint16_t* bits = value_bits(channel);
        for (std::ptrdiff_t x = 0; x < width;) {
            const auto index = static_cast<std::size_t>(16 - std::popcount(segments[x]));
            const Segment segment(columns_, channel, index);
            ListSums sums = sums_before(segment, known_[index], x);
            const std::uint16_t like = segments[x];
            for (std::ptrdiff_t count = kTogether; count == kTogether; x += count) {
                count = count_like(segments + x, like);
                Gains gains(segment.lists(x + side_), segment.lists(x));
                gains.keep(count);
                gains.cumulate();
                for_blocks([&](auto i) HWY_ATTR {
                    gains.template add_to<i>(sums);
                    sums.store_above(middle_, bits + x + static_cast<std::ptrdiff_t>(i()));
                });
            }
            sums.store(known_[index].sums);
            known_[index].place = x - 1;
        }
    }

    // The sums around the pixel before x.
    HWY_INLINE ListSums sums_before(const Segment& segment, const Known& known, std::ptrdiff_t x) const {
        ListSums sums = ListSums::zero();
        if (x - 1 - known.place > side_ / 2) {
            for (std::ptrdiff_t i = 0; i < side_; i += kTogether) {
                const ByteVec more = first_blocks(segment.lists(x + i), side_ - i);
                for_blocks([&](auto block) HWY_ATTR { sums.add(list_in<block>(more)); });
            }
            sums.cumulate();
        } else {
            for (std::ptrdiff_t i = known.place + 1; i < x; i += kTogether) {
                Gains gains(segment.lists(i + side_), segment.lists(i));
                gains.keep(x - i);
                for_blocks([&](auto block) HWY_ATTR { gains.template add_to<block>(sums); });
            }
            sums.cumulate();
            sums.add(ListSums::load(known.sums));
        }
        return sums;
    }

    // One less than 16 for each bit above.
    void write(Pixel* to, std::size_t width) const {
        const PixelTag d;
        const hn::Rebind<std::uint16_t, PixelTag> words;
        const auto values = [&](std::size_t channel, std::size_t x) HWY_ATTR {
            const auto segments = hn::PopulationCount(hn::LoadU(words, segment_bits(channel) + x));
            const auto above = hn::PopulationCount(hn::LoadU(words, value_bits(channel) + x));
            const auto taken = hn::Add(hn::ShiftLeft<4>(segments), above);
            return hn::PromoteTo(d, hn::Sub(hn::Set(words, 272), taken));
        };
        for (std::size_t x = 0; x < width; x += hn::Lanes(d)) {
            const PixelVec blueGreen = hn::Or(values(0, x), hn::ShiftLeft<8>(values(1, x)));
            const PixelVec pixels = opaque(hn::Or(blueGreen, hn::ShiftLeft<16>(values(2, x))));
            if (x + hn::Lanes(d) <= width) {
                hn::StoreU(pixels, d, to + x);
            } else {
                HWY_ALIGN Pixel last[hn::MaxLanes(PixelTag())];
                hn::Store(pixels, d, last);
                std::copy_n(last, width - x, to + x);
            }
        }
    }

    static constexpr auto kStep = static_cast<std::ptrdiff_t>(kEntries);

    const ByteColumns& columns_;
    std::ptrdiff_t side_;
    std::uint16_t middle_;
    std::size_t length_;
    hwy::AlignedFreeUniquePtr<std::uint16_t[]> bits_;
    Known known_[kEntries];
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
