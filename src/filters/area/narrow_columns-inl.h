// Sums over columns of a picture that fit 16 bits; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_NARROW_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_NARROW_COLUMNS_INL_H_
#undef PIXVANE_FILTERS_NARROW_COLUMNS_INL_H_
#else
#define PIXVANE_FILTERS_NARROW_COLUMNS_INL_H_
#endif

#include "filters/area/channel_sums-inl.h"
#include "filters/area/columns_walk-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
// To radius 127: sums that fit 16 bits, those of blue and red in one array, green and alpha in another.
class NarrowColumns : public ColumnsWalk<NarrowColumns> {
public:
    static constexpr std::int32_t kLargestRadius = 127;

    static std::size_t scratch(std::int32_t width) {
        return 2 * filters::ScratchCutter::bytes<std::uint32_t>(length(width, repeated(kLargestRadius)));
    }

    NarrowColumns(std::int32_t width, std::int32_t radius, filters::ScratchCutter& cutter)
        : ColumnsWalk(width, radius, repeated(radius)),
          blueRed_(cut_from(cutter)),
          greenAlpha_(cut_from(cutter)) {}

    // The sums around row y.
    void start(ConstPixelBuffer source, std::int32_t y) {
        std::fill_n(blueRed_, width_, 0U);
        std::fill_n(greenAlpha_, width_, 0U);
        add_rows(source, y - radius_, y + radius_);
        repeat_ends();
    }
    // The same from the sums of a smaller window around row y.
    void start(ConstPixelBuffer source, std::int32_t y, const NarrowColumns& smaller) {
        std::copy_n(smaller.blueRed_, width_, blueRed_);
        std::copy_n(smaller.greenAlpha_, width_, greenAlpha_);
        add_rows(source, y - radius_, y - smaller.radius_ - 1);
        add_rows(source, y + smaller.radius_ + 1, y + radius_);
        repeat_ends();
    }

    // What the window around x has more than the one before it, in pairs of words: modulo 2^16, so with its
    // sign up to radius 63, where the sums themselves are below 2^15.
    HWY_INLINE SignedWordVec blue_red_gain(std::int32_t x) const { return word_gain(blueRed_, x); }
    HWY_INLINE SignedWordVec green_alpha_gain(std::int32_t x) const { return word_gain(greenAlpha_, x); }

    // The same in integers, at any radius.
    HWY_INLINE ChannelLanes gain(std::int32_t x) const {
        const PixelTag d;
        const PixelVec in = taken_in(blueRed_, x);
        const PixelVec out = left_behind(blueRed_, x);
        const PixelVec mask = hn::Set(d, 0xFFFF);
        const PixelVec blue = hn::Sub(hn::And(in, mask), hn::And(out, mask));
        const PixelVec red = hn::Sub(hn::ShiftRight<16>(in), hn::ShiftRight<16>(out));
        const PixelVec green =
            hn::Sub(hn::And(taken_in(greenAlpha_, x), mask), hn::And(left_behind(greenAlpha_, x), mask));
        const IntTag ints;
        return {hn::BitCast(ints, blue), hn::BitCast(ints, green), hn::BitCast(ints, red)};
    }

    // The sum of the window before the first one.
    ChannelTotals sum_before() const {
        std::uint32_t blue = 0, green = 0, red = 0;
        const std::int32_t count = std::min(radius_, width_);
        for (std::int32_t x = 0; x < count; ++x) {
            blue += blueRed_[x] & 0xFFFF;
            red += blueRed_[x] >> 16;
            green += greenAlpha_[x] & 0xFFFF;
        }
        ChannelTotals totals;
        totals.add(1, blue, green, red);
        const auto add_column = [&](std::int64_t times, std::int32_t x) {
            totals.add(times, blueRed_[x] & 0xFFFF, greenAlpha_[x] & 0xFFFF, blueRed_[x] >> 16);
        };
        add_column(radius_ + 1, 0);
        add_column(radius_ - count, width_ - 1);
        return totals;
    }

private:
    friend ColumnsWalk<NarrowColumns>;

    // As far as windows reach.
    static std::int32_t repeated(std::int32_t radius) {
        return (radius + 1 + kMostLanes) / kMostLanes * kMostLanes + kMostLanes;
    }
    HWY_INLINE PixelVec taken_in(const std::uint32_t* sums, std::int32_t x) const {
        return hn::LoadU(PixelTag(), sums + x + ahead_);
    }
    HWY_INLINE PixelVec left_behind(const std::uint32_t* sums, std::int32_t x) const {
        return hn::LoadU(PixelTag(), sums + x - behind_);
    }

    HWY_INLINE SignedWordVec word_gain(const std::uint32_t* sums, std::int32_t x) const {
        const SignedWordTag words;
        return hn::Sub(hn::BitCast(words, taken_in(sums, x)), hn::BitCast(words, left_behind(sums, x)));
    }

    void add_rows(ConstPixelBuffer source, std::int32_t first, std::int32_t last) {
        const filters::RowRange rows(first, last, source.height);
        for (std::int32_t i = rows.first; i <= rows.last; ++i) add(source.row(i), 1);
        if (rows.above > 0) add(source.row(0), static_cast<std::uint16_t>(rows.above));
        if (rows.below > 0) add(source.row(source.height - 1), static_cast<std::uint16_t>(rows.below));
    }
    void add(const Pixel* row, std::uint16_t times) {
        const WordTag d;
        for_vectors_of(row, [=, this](PixelVec p, std::int32_t x) HWY_ATTR {
            add_words(blueRed_ + x, hn::Mul(blue_red_words(p), hn::Set(d, times)));
            add_words(greenAlpha_ + x, hn::Mul(green_alpha_words(p), hn::Set(d, times)));
        });
    }

    HWY_INLINE void exchange(PixelVec in, PixelVec out, std::int32_t x) {
        add_words(blueRed_ + x, hn::Sub(blue_red_words(in), blue_red_words(out)));
        add_words(greenAlpha_ + x, hn::Sub(green_alpha_words(in), green_alpha_words(out)));
    }

    static HWY_INLINE void add_words(std::uint32_t* sums, WordVec more) {
        const PixelTag d;
        const WordVec now = hn::BitCast(WordTag(), hn::LoadU(d, sums));
        hn::StoreU(hn::BitCast(d, hn::Add(now, more)), d, sums);
    }

    HWY_INLINE void repeat_ends() {
        repeat_ends_of(blueRed_);
        repeat_ends_of(greenAlpha_);
    }

    std::uint32_t* blueRed_;
    std::uint32_t* greenAlpha_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
