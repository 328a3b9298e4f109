// Runs of pixels filled, copied and composited.
// SPDX-License-Identifier: MIT
#include "core/pixel_rows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "core/pixel_rows.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"

#if HWY_ONCE
namespace pixvane::plain {
namespace {

void fill_row(Pixel* to, std::size_t count, Pixel value, bool /*streaming*/) {
    std::fill_n(to, count, value);
}

void copy_row(Pixel* to, const Pixel* from, std::size_t count, bool /*streaming*/, const Pixel* /*next*/) {
    std::copy_n(from, count, to);
}

void blend_row(Pixel* to, const Pixel* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) to[i] = source_over(to[i], from[i]);
}

void flatten_row(Pixel* to, const Pixel* from, std::size_t count, Pixel background, bool /*streaming*/,
                 const Pixel* /*next*/) {
    for (std::size_t i = 0; i < count; ++i) to[i] = source_over(background, from[i]);
}

}  // namespace
}  // namespace pixvane::plain
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
#if PIXVANE_VECTORS

using WordTag = hn::Repartition<std::uint16_t, PixelTag>;
using WordVec = hn::Vec<WordTag>;

// v / 255, rounded to nearest, for v up to 255 * 255 in each lane of `D`.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V divided_by_255(D d, V v) {
    const V raised = hn::Add(v, hn::Set(d, 128));
    return hn::ShiftRight<8>(hn::Add(raised, hn::ShiftRight<8>(raised)));
}

// Onto opaque pixels the result is opaque, and its channels are (s * source + (255 - s) * destination) / 255.
// An alpha of 255 in both makes the alpha come out of the same formula.
HWY_INLINE PixelVec over_opaque(PixelVec destination, PixelVec source) {
    const PixelTag d;
    const WordTag words;
    const PixelVec evenBytes = hn::Set(d, 0x00FF00FF);
    const PixelVec alpha = hn::ShiftRight<24>(source);
    const WordVec s = hn::BitCast(words, hn::Or(alpha, hn::ShiftLeft<16>(alpha)));
    const WordVec rest = hn::Sub(hn::Set(words, 255), s);
    const auto blend = [&](PixelVec from, PixelVec over) HWY_ATTR {
        const WordVec sum =
            hn::Add(hn::Mul(hn::BitCast(words, over), s), hn::Mul(hn::BitCast(words, from), rest));
        return hn::BitCast(d, divided_by_255(words, sum));
    };
    const PixelVec even = blend(hn::And(destination, evenBytes), hn::And(source, evenBytes));
    const PixelVec odd = blend(hn::And(hn::ShiftRight<8>(destination), evenBytes),
                               hn::And(hn::ShiftRight<8>(opaque(source)), evenBytes));
    return hn::Or(even, hn::ShiftLeft<8>(odd));
}

// Any pixels onto any, as the plain version does it; a quotient of floats is at most one off and is set right
// by its remainder.
HWY_INLINE PixelVec over_any(PixelVec destination, PixelVec source) {
    const PixelTag d;
    const IntTag ints;
    const hn::RebindToFloat<IntTag> floats;
    const PixelVec s = hn::ShiftRight<24>(source);
    const PixelVec full = hn::Set(d, 255);
    const PixelVec sourceWeight = hn::Mul(s, full);
    const PixelVec destinationWeight = hn::Mul(hn::ShiftRight<24>(destination), hn::Sub(full, s));
    const PixelVec total = hn::Add(sourceWeight, destinationWeight);
    const IntVec divisor = hn::BitCast(ints, hn::Max(hn::Add(total, total), hn::Set(d, 1)));
    const auto reciprocal = hn::Div(hn::Set(floats, 1.0F), hn::ConvertTo(floats, divisor));

    const auto blend = [&](PixelVec from, PixelVec over) HWY_ATTR {
        const PixelVec sum = hn::Add(hn::Mul(sourceWeight, over), hn::Mul(destinationWeight, from));
        const IntVec dividend = hn::BitCast(ints, hn::Add(hn::Add(sum, sum), total));
        const IntVec guess = hn::ConvertTo(ints, hn::Mul(hn::ConvertTo(floats, dividend), reciprocal));
        const IntVec rest = hn::Sub(dividend, hn::Mul(guess, divisor));
        // A comparison is -1 where it holds.
        const IntVec tooLarge = hn::VecFromMask(ints, hn::Lt(rest, hn::Zero(ints)));
        const IntVec tooSmall = hn::VecFromMask(ints, hn::Not(hn::Lt(rest, divisor)));
        return hn::BitCast(d, hn::Sub(hn::Add(guess, tooLarge), tooSmall));
    };
    const PixelVec red = blend(red_lanes(destination), red_lanes(source));
    const PixelVec green = blend(green_lanes(destination), green_lanes(source));
    const PixelVec blue = blend(blue_lanes(destination), blue_lanes(source));
    const PixelVec alpha = divided_by_255(d, total);
    const PixelVec mixed = hn::Or(hn::Or(hn::ShiftLeft<24>(alpha), hn::ShiftLeft<16>(red)),
                                  hn::Or(hn::ShiftLeft<8>(green), blue));
    const PixelVec covered = hn::IfThenElse(hn::Eq(s, full), source, mixed);
    return hn::IfThenElse(hn::Eq(s, hn::Zero(d)), destination, covered);
}

HWY_INLINE PixelVec over(PixelVec destination, PixelVec source) {
    const PixelTag d;
    const PixelVec alphas = hn::Set(d, kOpaque);
    const PixelVec sourceAlpha = hn::And(source, alphas);
    if (hn::AllTrue(d, hn::Eq(sourceAlpha, alphas))) return source;
    if (hn::AllTrue(d, hn::Eq(sourceAlpha, hn::Zero(d)))) return destination;
    if (hn::AllTrue(d, hn::Eq(hn::And(destination, alphas), alphas))) return over_opaque(destination, source);
    return over_any(destination, source);
}

// Pictures are opaque for the most part, which is found out four vectors at a time.
struct OverColour {
    Pixel background;
    HWY_INLINE PixelQuad operator()(const PixelQuad& q) const {
        const PixelTag d;
        const PixelVec alphas = hn::Set(d, kOpaque);
        const PixelVec common = hn::And(hn::And(q.v0, q.v1), hn::And(q.v2, q.v3));
        if (HWY_LIKELY(hn::AllTrue(d, hn::Eq(hn::And(common, alphas), alphas)))) return q;
        const PixelVec below = hn::Set(d, background);
        return {over(below, q.v0), over(below, q.v1), over(below, q.v2), over(below, q.v3)};
    }
};

void fill_row(Pixel* to, std::size_t count, Pixel value, bool streaming) {
    fill_run(to, count, value, streaming);
}

void copy_row(Pixel* to, const Pixel* from, std::size_t count, bool streaming, const Pixel* next) {
    copy_run(from, to, count, streaming, next);
}

void blend_row(Pixel* to, const Pixel* from, std::size_t count) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        hn::StoreU(over(hn::LoadU(d, to + i), hn::LoadU(d, from + i)), d, to + i);
    for (; i < count; ++i) to[i] = source_over(to[i], from[i]);
}

void flatten_row(Pixel* to, const Pixel* from, std::size_t count, Pixel background, bool streaming,
                 const Pixel* next) {
    transform_run(from, to, count, OverColour{background}, streaming, next);
}
#else
using plain::blend_row;
using plain::copy_row;
using plain::fill_row;
using plain::flatten_row;
#endif
}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane {

HWY_EXPORT(fill_row);
HWY_EXPORT(copy_row);
HWY_EXPORT(blend_row);
HWY_EXPORT(flatten_row);

void fill_row(Pixel* to, std::size_t count, Pixel value, bool streaming) {
    pick_kernel(plain::fill_row, HWY_DYNAMIC_DISPATCH(fill_row))(to, count, value, streaming);
}

void copy_row(Pixel* to, const Pixel* from, std::size_t count, bool streaming, const Pixel* next) {
    pick_kernel(plain::copy_row, HWY_DYNAMIC_DISPATCH(copy_row))(to, from, count, streaming, next);
}

void blend_row(Pixel* to, const Pixel* from, std::size_t count) {
    pick_kernel(plain::blend_row, HWY_DYNAMIC_DISPATCH(blend_row))(to, from, count);
}

void flatten_row(Pixel* to, const Pixel* from, std::size_t count, Pixel background, bool streaming,
                 const Pixel* next) {
    pick_kernel(plain::flatten_row, HWY_DYNAMIC_DISPATCH(flatten_row))(to, from, count, background, streaming,
                                                                       next);
}

void finish_rows(bool streaming) {
    if (streaming) hwy::FlushStream();
}

}  // namespace pixvane
#endif
