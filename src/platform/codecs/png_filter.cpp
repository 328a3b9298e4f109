// The row filters of PNG, for writing.
// SPDX-License-Identifier: MIT
#include "platform/codecs/png_filter.h"

#include <algorithm>
#include <array>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/codecs/png_filter.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace pixvane::codecs::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using D = hn::CappedTag<std::uint8_t, kPngRowMargin>;
using V = hn::Vec<D>;

HWY_INLINE V distance(V a, V b) { return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a)); }

HWY_INLINE V average(D d, V left, V above) {
    return hn::Sub(hn::AverageRound(left, above), hn::And(hn::Xor(left, above), hn::Set(d, 1)));
}

HWY_INLINE V paeth(D d, V left, V above, V corner) {
    const V toLeft = distance(above, corner);
    const V toAbove = distance(left, corner);
    // The prediction left + above - corner is as far from the corner as the two distances differ, if the
    // corner lies between the two; else it is farther from it than from either.
    const V inside = hn::Max(hn::Min(left, above), hn::Min(hn::Max(left, above), corner));
    const V toCorner = hn::IfThenElse(hn::Eq(inside, corner), distance(toLeft, toAbove), hn::Set(d, 255));
    const V others = hn::Min(toAbove, toCorner);
    const V other = hn::IfThenElse(hn::Eq(others, toAbove), above, corner);
    return hn::IfThenElse(hn::Eq(hn::Min(toLeft, others), toLeft), left, other);
}

/// The bytes of a row at one place, and their neighbours.
struct Place {
    Place(D d, const std::uint8_t* row, const std::uint8_t* aboveRow, std::size_t bytesPerPixel)
        : here(hn::LoadU(d, row)),
          left(hn::LoadU(d, row - bytesPerPixel)),
          above(hn::LoadU(d, aboveRow)),
          corner(hn::LoadU(d, aboveRow - bytesPerPixel)) {}

    template <int filter>
    HWY_INLINE V filtered(D d) const {
        if constexpr (filter == kPngNone) return here;
        if constexpr (filter == kPngSub) return hn::Sub(here, left);
        if constexpr (filter == kPngUp) return hn::Sub(here, above);
        if constexpr (filter == kPngAverage) return hn::Sub(here, average(d, left, above));
        if constexpr (filter == kPngPaeth) return hn::Sub(here, paeth(d, left, above, corner));
    }

    V here;
    V left;
    V above;
    V corner;
};

#if HWY_TARGET == HWY_SCALAR
using Sum = std::uint64_t;
HWY_INLINE void add_size(D, V residue, Sum& sum) {
    const std::uint8_t value = hn::GetLane(residue);
    sum += std::min<std::uint32_t>(value, 256u - value);
}
HWY_INLINE std::uint64_t total(const Sum& sum) { return sum; }
inline Sum no_sum() { return 0; }
#else
using D64 = hn::Repartition<std::uint64_t, D>;
using Sum = hn::Vec<D64>;
HWY_INLINE void add_size(D d, V residue, Sum& sum) {
    const hn::RebindToSigned<D> asSigned;
    sum = hn::Add(sum, hn::SumsOf8(hn::BitCast(d, hn::Abs(hn::BitCast(asSigned, residue)))));
}
HWY_INLINE std::uint64_t total(const Sum& sum) { return hn::GetLane(hn::SumOfLanes(D64(), sum)); }
inline Sum no_sum() { return hn::Zero(D64()); }
#endif

template <int filter>
void apply(const std::uint8_t* row, const std::uint8_t* above, std::size_t size, std::size_t bytesPerPixel,
           std::uint8_t* out) {
    const D d;
    for (std::size_t i = 0; i < size; i += hn::Lanes(d))
        hn::StoreU(Place(d, row + i, above + i, bytesPerPixel).filtered<filter>(d), d, out + i);
}

PngFilter filter_row(const std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                     std::size_t bytesPerPixel, std::uint8_t* out) {
    const D d;
    Sum none = no_sum(), sub = no_sum(), up = no_sum(), mean = no_sum(), choice = no_sum();
    for (std::size_t i = 0; i < size; i += hn::Lanes(d)) {
        const Place place(d, row + i, above + i, bytesPerPixel);
        add_size(d, place.filtered<kPngNone>(d), none);
        add_size(d, place.filtered<kPngSub>(d), sub);
        add_size(d, place.filtered<kPngUp>(d), up);
        add_size(d, place.filtered<kPngAverage>(d), mean);
        add_size(d, place.filtered<kPngPaeth>(d), choice);
    }
    const std::array<std::uint64_t, kPngFilters> left{total(none), total(sub), total(up), total(mean),
                                                      total(choice)};
    const auto filter = static_cast<PngFilter>(std::min_element(left.begin(), left.end()) - left.begin());
    switch (filter) {
        case kPngNone:
            apply<kPngNone>(row, above, size, bytesPerPixel, out);
            break;
        case kPngSub:
            apply<kPngSub>(row, above, size, bytesPerPixel, out);
            break;
        case kPngUp:
            apply<kPngUp>(row, above, size, bytesPerPixel, out);
            break;
        case kPngAverage:
            apply<kPngAverage>(row, above, size, bytesPerPixel, out);
            break;
        case kPngPaeth:
            apply<kPngPaeth>(row, above, size, bytesPerPixel, out);
            break;
    }
    return filter;
}

}  // namespace pixvane::codecs::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::codecs {

HWY_EXPORT(filter_row);

PngFilter filter_png_row(const std::uint8_t* row, const std::uint8_t* above, std::size_t size,
                         std::size_t bytesPerPixel, std::uint8_t* out) {
    return HWY_DYNAMIC_DISPATCH(filter_row)(row, above, size, bytesPerPixel, out);
}

}  // namespace pixvane::codecs
#endif
