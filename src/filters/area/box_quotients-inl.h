// Division of the sums over squares by the number of their pixels; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_BOX_QUOTIENTS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_BOX_QUOTIENTS_INL_H_
#undef PIXVANE_FILTERS_BOX_QUOTIENTS_INL_H_
#else
#define PIXVANE_FILTERS_BOX_QUOTIENTS_INL_H_
#endif

#include <cmath>
#include <cstdint>

#include "filters/area/neighbours-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
// The lanes of a vector of integers in doubles.
struct WideLanes {
    DoubleVec low, high;
};

HWY_INLINE WideLanes wide_lanes(IntVec v) {
    const hn::Rebind<std::int32_t, DoubleTag> half;
    const DoubleTag d;
    return {hn::PromoteTo(d, hn::LowerHalf(half, v)), hn::PromoteTo(d, hn::UpperHalf(half, v))};
}

// Division of whole numbers below 2^53 by divisors below 2^33, truncated. The reciprocal is a little too
// large, so that no quotient falls short of a whole number, and by far too little for one to reach the next.
class WideQuotient {
public:
    explicit WideQuotient(std::int64_t divisor) {
        if (divisor == 0) return;
        const double reciprocal = 1.0 / static_cast<double>(divisor);
        factor_ = std::nextafter(reciprocal, 2 * reciprocal);
    }

    // Of what gives no more than 255 and is not negative.
    HWY_INLINE IntVec operator()(const WideLanes& dividend) const {
        const auto factor = hn::Set(DoubleTag(), factor_);
        return truncated(hn::Mul(dividend.low, factor), hn::Mul(dividend.high, factor));
    }

    // Of anything; limited to 0..255.
    HWY_INLINE IntVec limited(const WideLanes& dividend) const {
        const DoubleTag d;
        const auto factor = hn::Set(d, factor_);
        const auto limit = [&](DoubleVec v)
                               HWY_ATTR { return hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, 255.0)); };
        return truncated(limit(hn::Mul(dividend.low, factor)), limit(hn::Mul(dividend.high, factor)));
    }

private:
    double factor_ = 1.0;
};

// Gains of windows summed up along a row in doubles; those of a vector still fit integers.
class WideRunningSum {
public:
    explicit WideRunningSum(std::int64_t before)
        : before_(hn::Set(DoubleTag(), static_cast<double>(before))) {}

    HWY_INLINE WideLanes next(IntVec gain) {
        const IntVec sums = sums_so_far(IntTag(), gain);
        const WideLanes wide = wide_lanes(sums);
        const DoubleVec last = wide_lanes(last_everywhere(sums)).low;
        const WideLanes result{hn::Add(before_, wide.low), hn::Add(before_, wide.high)};
        before_ = hn::Add(before_, last);
        return result;
    }

private:
    DoubleVec before_;
};

// Division of sums below 2^23 by divisors to 127 * 127. A sum comes with the bits of the float 2^23 on top,
// which make it a float; one multiply-add takes these off and divides. The reciprocal is a little too large,
// so that no quotient falls short of a whole number, and by far too little for one to reach the next.
class BiasedQuotient {
public:
    static constexpr std::int32_t kLargestRadius = HWY_NATIVE_FMA ? 63 : 0;
    static constexpr std::int64_t kBias = 0x4B000000;

    explicit BiasedQuotient(std::int64_t divisor) : reciprocal_(1.0F / static_cast<float>(divisor)) {
        if (static_cast<double>(reciprocal_) * static_cast<double>(divisor) < 1)
            reciprocal_ = std::nextafter(reciprocal_, 2.0F);
    }
    // The quotient in the bits that a power of two moves it to, with something of its fraction below.
    template <int kPower>
    HWY_INLINE IntVec times(IntVec biased) const {
        const hn::RebindToFloat<IntTag> d;
        const float factor = kPower * reciprocal_;
        const auto offset = hn::Set(d, -8388608.0F * factor);
        return truncated(hn::MulAdd(hn::BitCast(d, biased), hn::Set(d, factor), offset));
    }

private:
    float reciprocal_;
};

// Division of sums below 2^24 by one product with a float next to the reciprocal, where one does for this
// divisor: it is tried with the sums on either side of each quotient's first.
class ProductQuotient {
public:
    static constexpr std::int64_t kBias = 0;

    explicit ProductQuotient(std::int64_t divisor) {
        const float nearest = 1.0F / static_cast<float>(divisor);
        for (const float factor : {nearest, std::nextafter(nearest, 1.0F), std::nextafter(nearest, 0.0F)}) {
            if (!serves_) factor_ = factor;
            serves_ = serves_ || divides(factor, divisor);
        }
    }
    bool serves() const { return serves_; }

    template <int kPower>
    HWY_INLINE IntVec times(IntVec value) const {
        const hn::RebindToFloat<IntTag> d;
        return truncated(hn::Mul(hn::ConvertTo(d, value), hn::Set(d, kPower * factor_)));
    }

private:
    static bool divides(float factor, std::int64_t divisor) {
        bool does = true;
        for (std::int64_t quotient = 1; quotient <= 255; ++quotient) {
            const std::int64_t first = quotient * divisor;
            does = does && static_cast<float>(first) * factor >= static_cast<float>(quotient) &&
                   static_cast<float>(first - 1) * factor < static_cast<float>(quotient);
        }
        return does;
    }

    float factor_ = 1.0F;
    bool serves_ = false;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
