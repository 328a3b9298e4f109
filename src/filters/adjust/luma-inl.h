// Luma of vectors of pixels, equal to the doubles of filters/adjust/luma.h.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_LUMA_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_LUMA_INL_H_
#undef PIXVANE_FILTERS_LUMA_INL_H_
#else
#define PIXVANE_FILTERS_LUMA_INL_H_
#endif

#include "core/pixel_runs-inl.h"
#include "filters/adjust/luma.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

using FloatTag = hn::RebindToFloat<IntTag>;
using FloatVec = hn::Vec<FloatTag>;
using HalfIntTag = hn::Rebind<std::int32_t, DoubleTag>;

// The lanes of a vector of integers in doubles.
struct DoublePair {
    DoubleVec low, high;
};

HWY_INLINE DoublePair to_doubles(PixelVec values) {
    const HalfIntTag half;
    const DoubleTag d;
    const IntVec v = hn::BitCast(IntTag(), values);
    return {hn::PromoteTo(d, hn::LowerHalf(half, v)), hn::PromoteTo(d, hn::UpperHalf(half, v))};
}

// Of values that fit.
HWY_INLINE IntVec to_ints(const DoublePair& values) { return truncated(values.low, values.high); }

// The channels of pixels as floats.
struct FloatChannels {
    FloatVec red, green, blue;
};

HWY_INLINE FloatChannels to_floats(PixelVec pixels) {
    const FloatTag d;
    const IntTag ints;
    return {hn::ConvertTo(d, hn::BitCast(ints, red_lanes(pixels))),
            hn::ConvertTo(d, hn::BitCast(ints, green_lanes(pixels))),
            hn::ConvertTo(d, hn::BitCast(ints, blue_lanes(pixels)))};
}

enum class BlueIs { First, Last };  // in the sum

// (a x + b y) + c z, each operation rounded by itself.
HWY_INLINE DoubleVec sum_in_order(DoubleVec x, double a, DoubleVec y, double b, DoubleVec z, double c) {
    const DoubleTag d;
    const DoubleVec first = hn::Add(hn::Mul(x, hn::Set(d, a)), hn::Mul(y, hn::Set(d, b)));
    return hn::Add(first, hn::Mul(z, hn::Set(d, c)));
}

// The formula as it stands.
template <BlueIs kBlue>
HWY_INLINE IntVec luma_in_doubles(PixelVec pixels) {
    using namespace filters;
    const DoublePair r = to_doubles(red_lanes(pixels));
    const DoublePair g = to_doubles(green_lanes(pixels));
    const DoublePair b = to_doubles(blue_lanes(pixels));
    if constexpr (kBlue == BlueIs::Last) {
        return to_ints({sum_in_order(g.low, kLumaGreen, r.low, kLumaRed, b.low, kLumaBlue),
                        sum_in_order(g.high, kLumaGreen, r.high, kLumaRed, b.high, kLumaBlue)});
    } else {
        return to_ints({sum_in_order(b.low, kLumaBlue, r.low, kLumaRed, g.low, kLumaGreen),
                        sum_in_order(b.high, kLumaBlue, r.high, kLumaRed, g.high, kLumaGreen)});
    }
}

// A sum with it is rounded to a whole number, whose low bits are those of the float.
constexpr float kRounder = 12582912.0F;

// Greys whose luma in doubles, blue added last, falls short of themselves. With blue first none does.
constexpr std::int32_t kGreysFallingShort[] = {43, 86, 91, 167, 172, 182, 187, 233};

// `luma` is exact, and the lanes of `whole` had no fraction to cut off: there a sum of doubles may have come
// out just below the whole number. That is known of greys, which pictures are full of; other colours are
// rare, and done again.
template <BlueIs kBlue>
HWY_INLINE IntVec luma_where_whole(PixelVec pixels, IntVec luma, hn::Mask<IntTag> whole) {
    const IntTag d;
    const PixelVec unlike = hn::And(hn::Xor(pixels, hn::ShiftRight<8>(pixels)), hn::Set(PixelTag(), 0xFFFF));
    const auto grey = hn::Eq(hn::BitCast(d, unlike), hn::Zero(d));
    if (!hn::AllFalse(d, hn::AndNot(grey, whole))) return luma_in_doubles<kBlue>(pixels);
    if constexpr (kBlue == BlueIs::Last) {
        auto fallsShort = hn::Eq(luma, hn::Set(d, kGreysFallingShort[0]));
        for (const std::int32_t value : kGreysFallingShort)
            fallsShort = hn::Or(fallsShort, hn::Eq(luma, hn::Set(d, value)));
        luma = hn::IfThenElse(hn::And(fallsShort, whole), hn::Sub(luma, hn::Set(d, 1)), luma);
    }
    return luma;
}

// Luma in the low byte of each lane; what stands above it is of no meaning. Exact luma is a whole number of
// ten-thousandths, and floats can divide it: twice that number, less half of 20000 but for one, makes the
// rounding cut off the fraction.
template <BlueIs kBlue>
HWY_INLINE IntVec luma_low_bytes(PixelVec pixels) {
    const FloatTag d;
    const IntTag ints;
    const hn::Repartition<std::int16_t, PixelTag> words;
    constexpr std::int32_t kOne = 20000;
    constexpr std::int32_t kHalf = kOne / 2 - 1;
    const auto blueRed = hn::BitCast(words, hn::And(pixels, hn::Set(PixelTag(), 0x00FF00FF)));
    const auto greenAlpha = hn::BitCast(
        words, hn::ShiftRight<8>(hn::BitCast(hn::Repartition<std::uint16_t, PixelTag>(), pixels)));
    IntVec unused = hn::Zero(ints);
    IntVec sum = hn::ReorderWidenMulAccumulate(
        ints, blueRed, hn::BitCast(words, hn::Set(ints, 4250 << 16 | 1442)), hn::Set(ints, -kHalf), unused);
    sum = hn::ReorderWidenMulAccumulate(ints, greenAlpha, hn::BitCast(words, hn::Set(ints, 14308)), sum,
                                        unused);

    const FloatVec steps = hn::ConvertTo(d, sum);
    const FloatVec rounded = hn::MulAdd(steps, hn::Set(d, 1.0F / kOne), hn::Set(d, kRounder));
    const FloatVec quotient = hn::Sub(rounded, hn::Set(d, kRounder));
    const FloatVec rest = hn::NegMulAdd(quotient, hn::Set(d, kOne), steps);
    const auto whole = hn::Eq(rest, hn::Set(d, -kHalf));
    const IntVec luma = hn::BitCast(ints, rounded);
    if (HWY_LIKELY(hn::AllFalse(d, whole))) return luma;
    return luma_where_whole<kBlue>(pixels, hn::And(luma, hn::Set(ints, 0xFF)), hn::RebindMask(ints, whole));
}

// Luma, 0..255 in each lane.
template <BlueIs kBlue>
HWY_INLINE PixelVec luma_lanes(PixelVec pixels) {
    return hn::And(hn::BitCast(PixelTag(), luma_low_bytes<kBlue>(pixels)), hn::Set(PixelTag(), 0xFF));
}

// Luma in all four bytes of each lane.
template <BlueIs kBlue>
HWY_INLINE PixelVec luma_everywhere(PixelVec pixels) {
    return low_byte_everywhere(hn::BitCast(PixelTag(), luma_low_bytes<kBlue>(pixels)));
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
