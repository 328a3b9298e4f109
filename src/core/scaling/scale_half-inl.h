// Scaling to exactly one half by means of two by two opaque pixels; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_HALF_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_HALF_INL_H_
#undef PIXVANE_CORE_SCALE_HALF_INL_H_
#else
#define PIXVANE_CORE_SCALE_HALF_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_columns-inl.h"
#include "core/scaling/scale_products-inl.h"
#include "core/scaling/scale_result-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// A vector of means from two vectors of each of two rows. Keeps the lowest sums: those of alphas tell whether
// all pixels are opaque.
HWY_INLINE PixelVec halved(const Pixel* upper, const Pixel* lower, ShortVec& lowest) {
    // Channels of two neighbours side by side.
    alignas(16) static constexpr std::uint8_t kPairs[16] = {0, 4,  1, 5,  2,  6,  3,  7,
                                                            8, 12, 9, 13, 10, 14, 11, 15};
    // Pairs of pixels that come from the first vector, then those from the second.
    struct Order {
        alignas(64) std::int32_t lanes[kColumns];
        constexpr Order() : lanes() {
            for (std::int32_t i = 0; i < kColumns; ++i)
                lanes[i] = i % (kColumns / 2) / 2 * 4 + i / (kColumns / 2) * 2 + i % 2;
        }
    };
    static constexpr Order kOrder;
    const ByteTag d8;
    const ShortTag d16;
    const auto row_sums = [&](const Pixel* from) HWY_ATTR {
        const auto bytes = hn::BitCast(d8, hn::LoadU(PixelTag(), from));
        return byte_products(hn::TableLookupBytes(bytes, hn::LoadDup128(d8, kPairs)), hn::Set(d8, 1));
    };
    const auto upper_byte_means = [&](std::int32_t x) HWY_ATTR {
        const ShortVec sum = hn::Add(row_sums(upper + x), row_sums(lower + x));
        lowest = hn::Min(lowest, sum);
        return hn::ShiftLeft<6>(hn::Add(sum, hn::Set(d16, 2)));
    };
    const PixelVec pairs = upper_bytes(upper_byte_means(0), upper_byte_means(kColumns));
    return hn::TableLookupLanes(pairs, hn::SetTableIndices(PixelTag(), kOrder.lanes));
}

// A row of such means; returns whether all pixels are opaque. `next` pixels further on begin the two rows
// that are read next, which are fetched meanwhile.
template <bool kStreaming>
HWY_INLINE bool halve_rows(const Pixel* upper, const Pixel* lower, std::ptrdiff_t next, Pixel* to,
                           std::int32_t count) {
    const PixelTag d;
    const ShortTag d16;
    const hn::Repartition<std::uint64_t, PixelTag> d64;
    const ShortVec opaque = hn::Set(d16, 4 * 255);
    ShortVec lowest = opaque;
    std::int32_t x = 0;
    for (; x + kColumns <= count; x += kColumns, upper += 2 * kColumns, lower += 2 * kColumns) {
        for (const Pixel* row : {upper, lower}) {
            fetch_line(row + next);
            fetch_line(row + next + kColumns);
        }
        const PixelVec pixels = halved(upper, lower, lowest);
        if constexpr (kStreaming) {
            hn::Stream(pixels, d, to + x);
        } else {
            hn::StoreU(pixels, d, to + x);
        }
    }
    if (x < count) {
        HWY_ALIGN Pixel few[2][2 * kColumns];
        std::fill_n(few[0], 4 * kColumns, kOpaque);
        const std::size_t bytes = static_cast<std::size_t>(count - x) * sizeof(Pixel);
        std::memcpy(few[0], upper, 2 * bytes);
        std::memcpy(few[1], lower, 2 * bytes);
        const PixelVec pixels = halved(few[0], few[1], lowest);
        hn::StoreU(pixels, d, few[0]);
        std::memcpy(to + x, few[0], bytes);
    }
    const auto lacking = hn::BitCast(d64, hn::Xor(lowest, opaque));
    return hn::AllTrue(d64, hn::Eq(hn::ShiftRight<48>(lacking), hn::Zero(d64)));
}

void halve(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, ResultRows& result,
           std::int32_t first, std::int32_t last) {
    const bool streaming = is_large(target, first, last);
    const bool direct = streaming && !result.needs_line() && can_stream(target);
    const std::int32_t left = scaling.x().begin();
    for (std::int32_t y = first; y < last; ++y) {
        const std::int32_t row = scaling.y().taps(y).first;
        const Pixel* upper = source.row(row) + left;
        const Pixel* lower = source.row(row + 1) + left;
        const std::ptrdiff_t next = y + 1 < last ? std::ptrdiff_t{2} * source.width : 0;
        Pixel* to = result.place(y);
        const bool isOpaque = direct ? halve_rows<true>(upper, lower, next, to, target.width)
                                     : halve_rows<false>(upper, lower, next, to, target.width);
        if (isOpaque) {
            result.finish_opaque(y, to, streaming);
        } else {
            result.make_other(y);
        }
    }
    hwy::FlushStream();
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
