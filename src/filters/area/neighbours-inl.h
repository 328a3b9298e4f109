// Rows of results from vectors of neighbouring pixels, and what is common to their arithmetic.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_NEIGHBOURS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_NEIGHBOURS_INL_H_
#undef PIXVANE_FILTERS_NEIGHBOURS_INL_H_
#else
#define PIXVANE_FILTERS_NEIGHBOURS_INL_H_
#endif

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/pixel_runs-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

using WordTag = hn::Repartition<std::uint16_t, PixelTag>;
using WordVec = hn::Vec<WordTag>;
using SignedWordTag = hn::RebindToSigned<WordTag>;
using SignedWordVec = hn::Vec<SignedWordTag>;

HWY_INLINE std::int32_t lanes_of_pixels() { return static_cast<std::int32_t>(hn::Lanes(PixelTag())); }

// Blue and red, green and alpha of each pixel in words.
HWY_INLINE WordVec blue_red_words(PixelVec p) {
    return hn::BitCast(WordTag(), hn::And(p, hn::Set(PixelTag(), 0x00FF00FF)));
}
HWY_INLINE WordVec green_alpha_words(PixelVec p) { return hn::ShiftRight<8>(hn::BitCast(WordTag(), p)); }

// The opposite for words up to 255; alpha becomes 255.
HWY_INLINE PixelVec pixels_of_words(WordVec blueRed, WordVec greenAlpha) {
    return opaque(hn::BitCast(PixelTag(), hn::Or(blueRed, hn::ShiftLeft<8>(greenAlpha))));
}

// Of values 0..255 in each lane.
HWY_INLINE PixelVec pixels_of_channels(IntVec blue, IntVec green, IntVec red) {
    const PixelTag d;
    return opaque(hn::Or(hn::BitCast(d, blue), hn::Or(hn::ShiftLeft<8>(hn::BitCast(d, green)),
                                                      hn::ShiftLeft<16>(hn::BitCast(d, red)))));
}

// The same of values that are where they shall be, with what doesn't matter above and below them; blue with
// nothing above.
HWY_INLINE PixelVec pixels_of_placed(IntVec blue, IntVec green, IntVec red) {
    const PixelTag d;
    const PixelVec blueGreen =
        hn::OrAnd(hn::BitCast(d, blue), hn::BitCast(d, green), hn::Set(d, std::uint32_t{0xFF00}));
    return opaque(hn::OrAnd(blueGreen, hn::BitCast(d, red), hn::Set(d, std::uint32_t{0xFF0000})));
}

// A vector of pixels from place x of a row, whose edge pixels go on beyond its ends.
inline HWY_NOINLINE PixelVec load_repeating(const Pixel* row, std::int32_t width, std::int32_t x) {
    const PixelTag d;
    const std::int32_t lanes = lanes_of_pixels();
    if (x >= 0 && x + lanes <= width) return hn::LoadU(d, row + x);
    HWY_ALIGN Pixel buffer[hn::MaxLanes(PixelTag())];
    for (std::int32_t i = 0; i < lanes; ++i) buffer[i] = row[std::clamp(x + i, 0, width - 1)];
    return hn::Load(d, buffer);
}

// Neighbours of the pixels from x on: in the midst of a row, or where it has to go on beyond its ends.
struct InTheMidst {
    HWY_INLINE PixelVec operator()(const Pixel* row, std::int32_t x) const {
        return hn::LoadU(PixelTag(), row + x);
    }
};
struct NearTheEnds {
    std::int32_t width;
    HWY_INLINE PixelVec operator()(const Pixel* row, std::int32_t x) const {
        return load_repeating(row, width, x);
    }
};

// Makes a row of `width` pixels by make.make(x, load, vectors), one or two vectors of them. It loads what it
// wants by load(row, place), places from x - reach to reach beyond the last pixel. `ahead` is the row of the
// source that the next row will want first.
template <class Make>
HWY_INLINE void make_row(Pixel* to, std::int32_t width, std::int32_t reach, bool streaming,
                         const Pixel* ahead, const Make& make) {
    const PixelTag d;
    const std::int32_t lanes = lanes_of_pixels();
    const NearTheEnds nearEnds{width};
    PixelVec one[1];
    if (width < lanes) {
        HWY_ALIGN Pixel buffer[hn::MaxLanes(PixelTag())];
        make.make(0, nearEnds, one);
        hn::Store(one[0], d, buffer);
        std::memcpy(to, buffer, static_cast<std::size_t>(width) * sizeof(Pixel));
        return;
    }
    const auto make_near_ends = [&](std::int32_t x) HWY_ATTR {
        make.make(x, nearEnds, one);
        hn::StoreU(one[0], d, to + x);
    };
    make_near_ends(0);
    // The next ones are aligned.
    const std::size_t bytes = hn::Lanes(ByteTag());
    std::int32_t x =
        lanes - static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(to) % bytes / sizeof(Pixel));
    for (; x < reach && x + lanes <= width; x += lanes) make_near_ends(x);
    const InTheMidst midst;
    for (; x + 2 * lanes + reach <= width; x += 2 * lanes) {
        PixelVec two[2];
        fetch_line(ahead + x);
        if (lanes > 8) fetch_line(ahead + x + lanes);
        make.make(x, midst, two);
        if (streaming) {
            hn::Stream(two[0], d, to + x);
            hn::Stream(two[1], d, to + x + lanes);
        } else {
            hn::StoreU(two[0], d, to + x);
            hn::StoreU(two[1], d, to + x + lanes);
        }
    }
    for (; x + lanes <= width; x += lanes) make_near_ends(x);
    if (x < width) make_near_ends(width - lanes);
}

// What makes single vectors by one(x, load), made to make several.
template <class Single>
struct EachOfSeveral {
    const Single& single;

    template <std::size_t N, class Load>
    HWY_INLINE void make(std::int32_t x, const Load& load, PixelVec (&made)[N]) const {
        for (std::size_t i = 0; i < N; ++i)
            made[i] = single.one(x + static_cast<std::int32_t>(i) * lanes_of_pixels(), load);
    }
};

// Adds the products of pairs of words, a pair in each lane, to a sum.
HWY_INLINE IntVec add_products(IntVec sum, SignedWordVec a, SignedWordVec b) {
    IntVec unused = hn::Zero(IntTag());
    return hn::ReorderWidenMulAccumulate(IntTag(), a, b, sum, unused);
}

// Division of 0..256 divisor - 1, below 2^24, truncated. The divisor is at most 65536: then floats next to a
// quotient k lie at 1 / divisor from it at the most, so that a quotient that is rounded once, to the nearest,
// doesn't reach k from below. Where there is a fused multiply-add, the reciprocal has a second float for what
// its first one lacks.
class ByteQuotient {
public:
    static constexpr std::int64_t kLargestDivisor = 65536;
    static constexpr std::int64_t kBias = 0;  // that dividends come with

    explicit ByteQuotient(std::int64_t divisor)
        : divisor_(static_cast<float>(divisor)),
          reciprocal_(1.0F / divisor_),
          rest_(static_cast<float>(1.0 / static_cast<double>(divisor) - static_cast<double>(reciprocal_))) {}

    HWY_INLINE IntVec operator()(IntVec value) const { return times<1>(value); }

    // The quotient in the bits that a power of two moves it to, with something of its fraction below.
    template <int kPower>
    HWY_INLINE IntVec times(IntVec value) const {
        const hn::RebindToFloat<IntTag> d;
        const auto dividend = hn::ConvertTo(d, value);
#if HWY_NATIVE_FMA
        const auto small = hn::Mul(dividend, hn::Set(d, kPower * rest_));
        return truncated(hn::MulAdd(dividend, hn::Set(d, kPower * reciprocal_), small));
#else
        return truncated(hn::Div(dividend, hn::Set(d, divisor_ / kPower)));
#endif
    }

private:
    float divisor_, reciprocal_, rest_;
};

// Division of words up to `limit` by small divisors, 0 among them, which leaves them as they are.
class WordQuotient {
public:
    WordQuotient(std::int64_t divisor, std::int64_t limit) {
        if (divisor < 2) return;
        while ((std::int64_t{2} << shift_) < divisor) ++shift_;
        const std::int64_t power = std::int64_t{1} << (16 + shift_);
        const std::int64_t factor = (power + divisor - 1) / divisor;
        factor_ = static_cast<std::uint16_t>(factor);
        // What the factor is too large by may not reach the next whole number.
        exact_ = factor <= 65535 && (factor * divisor - power) * limit < power;
    }

    bool is_exact() const { return exact_; }

    HWY_INLINE WordVec operator()(WordVec value) const {
        if (factor_ == 0) return value;
        return hn::ShiftRightSame(hn::MulHigh(value, hn::Set(WordTag(), factor_)), shift_);
    }

private:
    std::uint16_t factor_ = 0;
    int shift_ = 0;
    bool exact_ = true;
};

// Sums of integers, or of the words in them.
template <class LaneTag>
HWY_INLINE IntVec sum_of(LaneTag d, IntVec a, IntVec b) {
    return hn::BitCast(IntTag(), hn::Add(hn::BitCast(d, a), hn::BitCast(d, b)));
}

// The same only in the lanes that kLanes has a bit for; the others stay `a`.
template <std::uint32_t kLanes, class LaneTag>
HWY_INLINE IntVec sum_in(LaneTag lane, IntVec a, IntVec b) {
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
    if constexpr (sizeof(hn::TFromD<LaneTag>) == 4) {
        return IntVec{_mm512_mask_add_epi32(a.raw, kLanes, a.raw, b.raw)};
    } else {
        // A lane has two words, and lanes come in fours here.
        constexpr std::uint32_t kWords =
            (kLanes & 0x10) * 0xFF0u | (kLanes & 0x100) * 0xFF00u | (kLanes & 0x1000) * 0xFF000u;
        return IntVec{_mm512_mask_add_epi16(a.raw, kWords, a.raw, b.raw)};
    }
#else
    const IntTag d;
    alignas(64) static constexpr std::int32_t kBits[16] = {1,   2,   4,    8,    16,   32,   64,    128,
                                                           256, 512, 1024, 2048, 4096, 8192, 16384, 32768};
    const IntVec bits = hn::And(hn::Load(d, kBits), hn::Set(d, static_cast<std::int32_t>(kLanes)));
    return sum_of(lane, a, hn::IfThenZeroElse(hn::Eq(bits, hn::Zero(d)), b));
#endif
}

// The sum of each lane and those before it.
template <class LaneTag>
HWY_INLINE IntVec sums_so_far(LaneTag lane, IntVec v) {
    const IntTag d;
    v = sum_of(lane, v, hn::ShiftLeftLanes<1>(d, v));
    v = sum_of(lane, v, hn::ShiftLeftLanes<2>(d, v));
    // Then the blocks of four lanes: each gets the last lane of the one before it, and so on.
    if constexpr (hn::MaxLanes(IntTag()) >= 8) {
        alignas(64) static constexpr std::int32_t kLast[16] = {0, 0, 0, 0, 3,  3,  3,  3,
                                                               0, 0, 0, 0, 11, 11, 11, 11};
        v = sum_in<0xF0F0>(lane, v, hn::TableLookupLanes(v, hn::SetTableIndices(d, kLast)));
    }
    if constexpr (hn::MaxLanes(IntTag()) >= 16) {
        const auto seventh = hn::IndicesFromVec(d, hn::Set(d, std::int32_t{7}));
        v = sum_in<0xFF00>(lane, v, hn::TableLookupLanes(v, seventh));
    }
    return v;
}

HWY_INLINE IntVec last_everywhere(IntVec v) {
    const IntTag d;
    return hn::TableLookupLanes(
        v, hn::IndicesFromVec(d, hn::Set(d, static_cast<std::int32_t>(hn::MaxLanes(IntTag()) - 1))));
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
