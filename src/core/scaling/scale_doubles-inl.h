// Sums along rows in doubles, which hold them exactly; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_DOUBLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_DOUBLES_INL_H_
#undef PIXVANE_CORE_SCALE_DOUBLES_INL_H_
#else
#define PIXVANE_CORE_SCALE_DOUBLES_INL_H_
#endif

#include <cstddef>
#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale_axis.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Four sums of one pixel, as doubles.
using SumTag = hn::CappedTag<double, 4>;
using SumVec = hn::Vec<SumTag>;
constexpr std::size_t kPart = hn::MaxLanes(SumTag());
constexpr std::size_t kParts = 4 / kPart;

struct PixelSum {
    SumVec part[kParts];
};

HWY_INLINE PixelSum load_pixel(const std::int32_t* from) {
    const SumTag d;
    PixelSum sum;
    for (std::size_t i = 0; i < kParts; ++i)
        sum.part[i] = hn::PromoteTo(d, hn::LoadU(hn::Rebind<std::int32_t, SumTag>(), from + i * kPart));
    return sum;
}

HWY_INLINE void add_times(PixelSum& sum, const PixelSum& more, double weight) {
    const auto factor = hn::Set(SumTag(), weight);
    for (std::size_t i = 0; i < kParts; ++i) sum.part[i] = hn::MulAdd(more.part[i], factor, sum.part[i]);
}

HWY_INLINE PixelSum sum_of(const std::int32_t* columns, const Taps& taps, double innerWeight, SumVec start) {
    const std::int32_t last = taps.count - 1;
    PixelSum sum;
    for (std::size_t i = 0; i < kParts; ++i) sum.part[i] = start;
    add_times(sum, load_pixel(columns), taps.firstWeight);
    if (last > 1) {
        PixelSum inner = load_pixel(columns + 4);
        for (std::int32_t i = 2; i < last; ++i) {
            const PixelSum more = load_pixel(columns + 4 * i);
            for (std::size_t k = 0; k < kParts; ++k) inner.part[k] = hn::Add(inner.part[k], more.part[k]);
        }
        add_times(sum, inner, innerWeight);
    }
    if (last > 0) add_times(sum, load_pixel(columns + 4 * last), taps.lastWeight);
    return sum;
}

// The same of a coarse axis.
HWY_INLINE PixelSum coarse_sum_of(const std::int32_t* columns, const ScaleAxis& axis, const Taps& taps,
                                  SumVec start) {
    PixelSum sum;
    for (std::size_t i = 0; i < kParts; ++i) sum.part[i] = start;
    for (std::int32_t i = 0; i < taps.count; ++i)
        add_times(sum, load_pixel(columns + 4 * i), axis.weight(taps, i));
    return sum;
}

HWY_INLINE void store_pixel(const PixelSum& channels, Pixel* to) {
    const hn::Rebind<std::int32_t, SumTag> d32;
    const hn::Rebind<std::uint8_t, SumTag> d8;
    auto* bytes = reinterpret_cast<std::uint8_t*>(to);
    for (std::size_t i = 0; i < kParts; ++i)
        hn::StoreU(hn::DemoteTo(d8, hn::DemoteTo(d32, channels.part[i])), d8, bytes + i * kPart);
}

// The channels of a pixel from the sums of channels times alpha, and of alpha.
HWY_INLINE PixelSum divided(const PixelSum& sum, double total) {
    const SumTag d;
    const SumVec last = sum.part[kParts - 1];
    SumVec alpha = hn::InterleaveUpper(d, last, last);
    if constexpr (kParts == 1) alpha = hn::ConcatUpperUpper(d, alpha, alpha);
    PixelSum result;
    for (std::size_t i = 0; i < kParts; ++i) {
        SumVec by = alpha;
        if (i + 1 == kParts) by = hn::IfThenElse(hn::FirstN(d, kPart - 1), alpha, hn::Set(d, total));
        result.part[i] = hn::Div(hn::MulAdd(hn::Set(d, 2), sum.part[i], by), hn::Add(by, by));
    }
    return result;
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
