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

// A vector of pixels from place x of a row, whose edge pixels go on beyond its ends.
HWY_NOINLINE PixelVec load_repeating(const Pixel* row, std::int32_t width, std::int32_t x) {
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

// Makes a row of `width` pixels of make(x, load), a vector each. It loads what it wants by load(row, place),
// places from x - reach to x + reach.
template <class Make>
HWY_INLINE void make_row(Pixel* to, std::int32_t width, std::int32_t reach, bool streaming,
                         const Make& make) {
    const PixelTag d;
    const std::int32_t lanes = lanes_of_pixels();
    const NearTheEnds nearEnds{width};
    if (width < lanes) {
        HWY_ALIGN Pixel buffer[hn::MaxLanes(PixelTag())];
        hn::Store(make(0, nearEnds), d, buffer);
        std::memcpy(to, buffer, static_cast<std::size_t>(width) * sizeof(Pixel));
        return;
    }
    hn::StoreU(make(0, nearEnds), d, to);
    // The next ones are aligned.
    const std::size_t bytes = hn::Lanes(ByteTag());
    std::int32_t x =
        lanes - static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(to) % bytes / sizeof(Pixel));
    for (; x < reach && x + lanes <= width; x += lanes) hn::StoreU(make(x, nearEnds), d, to + x);
    const InTheMidst midst;
    if (streaming) {
        for (; x + lanes + reach <= width; x += lanes) hn::Stream(make(x, midst), d, to + x);
    } else {
        for (; x + lanes + reach <= width; x += lanes) hn::StoreU(make(x, midst), d, to + x);
    }
    for (; x + lanes <= width; x += lanes) hn::StoreU(make(x, nearEnds), d, to + x);
    if (x < width) hn::StoreU(make(width - lanes, nearEnds), d, to + width - lanes);
}

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

    explicit ByteQuotient(std::int64_t divisor)
        : divisor_(static_cast<float>(divisor)),
          reciprocal_(1.0F / divisor_),
          rest_(static_cast<float>(1.0 / static_cast<double>(divisor) - static_cast<double>(reciprocal_))) {}

    HWY_INLINE IntVec operator()(IntVec value) const {
        const hn::RebindToFloat<IntTag> d;
        const auto dividend = hn::ConvertTo(d, value);
#if HWY_NATIVE_FMA
        const auto small = hn::Mul(dividend, hn::Set(d, rest_));
        return hn::ConvertTo(IntTag(), hn::MulAdd(dividend, hn::Set(d, reciprocal_), small));
#else
        return hn::ConvertTo(IntTag(), hn::Div(dividend, hn::Set(d, divisor_)));
#endif
    }

private:
    float divisor_, reciprocal_, rest_;
};

// The sum of each lane and those before it.
HWY_INLINE IntVec sums_so_far(IntVec v) {
    const IntTag d;
    v = hn::Add(v, hn::ShiftLeftLanes<1>(d, v));
    v = hn::Add(v, hn::ShiftLeftLanes<2>(d, v));
    // Then the blocks of four lanes: each gets the last lane of the one before it, and so on.
    if constexpr (hn::MaxLanes(IntTag()) >= 8) {
        alignas(64) static constexpr std::int32_t kLast[16] = {0, 0, 0, 0, 3,  3,  3,  3,
                                                               0, 0, 0, 0, 11, 11, 11, 11};
        alignas(64) static constexpr std::int32_t kOdd[16] = {0, 0, 0, 0, -1, -1, -1, -1,
                                                              0, 0, 0, 0, -1, -1, -1, -1};
        const auto last = hn::TableLookupLanes(v, hn::SetTableIndices(d, kLast));
        v = hn::Add(v, hn::IfThenElseZero(hn::MaskFromVec(hn::Load(d, kOdd)), last));
    }
    if constexpr (hn::MaxLanes(IntTag()) >= 16) {
        alignas(64) static constexpr std::int32_t kUpper[16] = {0,  0,  0,  0,  0,  0,  0,  0,
                                                                -1, -1, -1, -1, -1, -1, -1, -1};
        alignas(64) static constexpr std::int32_t kSeventh[16] = {7, 7, 7, 7, 7, 7, 7, 7,
                                                                  7, 7, 7, 7, 7, 7, 7, 7};
        const auto seventh = hn::TableLookupLanes(v, hn::SetTableIndices(d, kSeventh));
        v = hn::Add(v, hn::IfThenElseZero(hn::MaskFromVec(hn::Load(d, kUpper)), seventh));
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
