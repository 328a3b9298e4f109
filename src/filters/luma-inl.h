// Luma of vectors of pixels, in the doubles of filters/luma.h.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_LUMA_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_LUMA_INL_H_
#undef PIXVANE_FILTERS_LUMA_INL_H_
#else
#define PIXVANE_FILTERS_LUMA_INL_H_
#endif

#include "core/pixel_runs-inl.h"
#include "filters/luma.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

using DoubleTag = hn::Repartition<double, PixelTag>;
using DoubleVec = hn::Vec<DoubleTag>;
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

// Truncates toward zero.
HWY_INLINE IntVec to_ints(const DoublePair& values) {
    const HalfIntTag half;
    return hn::Combine(IntTag(), hn::DemoteTo(half, values.high), hn::DemoteTo(half, values.low));
}

// (a x + b y) + c z, each operation rounded by itself.
HWY_INLINE DoubleVec sum_in_order(DoubleVec x, double a, DoubleVec y, double b, DoubleVec z, double c) {
    const DoubleTag d;
    const DoubleVec first = hn::Add(hn::Mul(x, hn::Set(d, a)), hn::Mul(y, hn::Set(d, b)));
    return hn::Add(first, hn::Mul(z, hn::Set(d, c)));
}

HWY_INLINE IntVec luma_lanes_blue_last(const DoublePair& r, const DoublePair& g, const DoublePair& b) {
    using namespace filters;
    return to_ints({sum_in_order(g.low, kLumaGreen, r.low, kLumaRed, b.low, kLumaBlue),
                    sum_in_order(g.high, kLumaGreen, r.high, kLumaRed, b.high, kLumaBlue)});
}

HWY_INLINE IntVec luma_lanes_blue_first(const DoublePair& r, const DoublePair& g, const DoublePair& b) {
    using namespace filters;
    return to_ints({sum_in_order(b.low, kLumaBlue, r.low, kLumaRed, g.low, kLumaGreen),
                    sum_in_order(b.high, kLumaBlue, r.high, kLumaRed, g.high, kLumaGreen)});
}

HWY_INLINE PixelVec luma_lanes(PixelVec pixels) {
    return hn::BitCast(PixelTag(),
                       luma_lanes_blue_last(to_doubles(red_lanes(pixels)), to_doubles(green_lanes(pixels)),
                                            to_doubles(blue_lanes(pixels))));
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
