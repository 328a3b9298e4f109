// Bilinear scaling of opaque rows in vector code; included once for each instruction set.
//
// Sums of channels times weights take 16 bits along a row (255 * 256) and 24 bits in all: rows are widened
// first, each source row once, then neighbours among them are mixed. No rounding comes before the last one.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_SCALE_BILINEAR_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_SCALE_BILINEAR_INL_H_
#undef PIXVANE_FILTERS_SCALE_BILINEAR_INL_H_
#else
#define PIXVANE_FILTERS_SCALE_BILINEAR_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/pixel_runs-inl.h"
#include "filters/scale.h"
#include "filters/scale_products-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

constexpr std::int32_t kLanes = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));

// A row of the source from which windows of a vector and one pixel may be read anywhere: near the end of the
// row they come from a copy.
class WindowedRow {
public:
    WindowedRow(const Pixel* row, std::int32_t width)
        : row_(row), width_(width), edge_(std::max(0, width - kLanes)) {
        const std::int32_t count = width - edge_;
        std::memcpy(copy_, row + edge_, static_cast<std::size_t>(count) * sizeof(Pixel));
        std::fill(copy_ + count, copy_ + 2 * kLanes + 1, row[width - 1]);
    }
    HWY_INLINE const Pixel* from(std::int32_t x) const {
        return x + kLanes < width_ ? row_ + x : copy_ + (x - edge_);
    }

private:
    const Pixel* row_;
    std::int32_t width_;
    std::int32_t edge_;
    Pixel copy_[2 * kLanes + 1];
};

struct TapPair {
    PixelVec left, right;
};

// The left and right source pixels of a vector of target pixels. Where the row shrinks they lie in two
// windows at most, one for each half of the vector.
template <bool kShrinks>
HWY_INLINE TapPair load_taps(const WindowedRow& row, const std::int32_t* left) {
    const PixelTag d;
    const IntTag di;
    const auto places = hn::LoadU(di, left);
    const Pixel* lower = row.from(left[0]);
    if constexpr (kShrinks) {
        const std::int32_t middle = left[kLanes / 2];
        const Pixel* upper = row.from(middle);
        const auto starts = hn::ConcatUpperLower(di, hn::Set(di, middle), hn::Set(di, left[0]));
        const auto lanes = hn::IndicesFromVec(d, hn::Sub(places, starts));
        const auto pick = [&](const Pixel* low, const Pixel* high) {
            return hn::ConcatUpperLower(d, hn::TableLookupLanes(hn::LoadU(d, high), lanes),
                                        hn::TableLookupLanes(hn::LoadU(d, low), lanes));
        };
        return {pick(lower, upper), pick(lower + 1, upper + 1)};
    } else {
        const auto lanes = hn::IndicesFromVec(d, hn::Sub(places, hn::Set(di, left[0])));
        return {hn::TableLookupLanes(hn::LoadU(d, lower), lanes),
                hn::TableLookupLanes(hn::LoadU(d, lower + 1), lanes)};
    }
}

// Sums of a row, less 2^15 so that they fit signed numbers: for each vector of pixels the sums of the lower
// halves of its blocks, then those of the upper halves. Returns whether all pixels that were used are opaque.
template <bool kShrinks>
HWY_INLINE bool widen_row(const Pixel* source, std::int32_t width, const ScaleAxis& axis,
                          std::int16_t* sums) {
    const PixelTag d;
    const ByteTag d8;
    const ShortTag d16;
    const WindowedRow row(source, width);
    const auto zero = hn::Zero(d8);
    const auto bias = hn::Set(d16, static_cast<std::int16_t>(-0x8000));
    PixelVec common = hn::Set(d, ~0u);
    for (std::int32_t x = 0; x < axis.count(); x += kLanes, sums += 4 * kLanes) {
        const TapPair taps = load_taps<kShrinks>(row, axis.left() + x);
        common = hn::And(common, hn::And(taps.left, taps.right));
        const auto left = hn::BitCast(d8, taps.left);
        const auto right = hn::BitCast(d8, taps.right);
        const auto weights = hn::LoadU(d, axis.right_weights() + x);
        const auto mix = [&](auto left256, auto left1, auto right1, auto weight) {
            const auto difference = hn::Sub(hn::BitCast(d16, right1), hn::BitCast(d16, left1));
            return hn::Add(hn::Xor(hn::BitCast(d16, left256), bias),
                           hn::Mul(difference, hn::BitCast(d16, weight)));
        };
        hn::StoreU(mix(hn::InterleaveLower(d8, zero, left), hn::InterleaveLower(d8, left, zero),
                       hn::InterleaveLower(d8, right, zero), hn::InterleaveLower(d, weights, weights)),
                   d16, sums);
        hn::StoreU(mix(hn::InterleaveUpper(d8, zero, left), hn::InterleaveUpper(d8, left, zero),
                       hn::InterleaveUpper(d8, right, zero), hn::InterleaveUpper(d, weights, weights)),
                   d16, sums + 2 * kLanes);
    }
    return hn::AllTrue(d, hn::Eq(hn::ShiftRight<24>(common), hn::Set(d, 0xFF)));
}

// Byte 2 of every 32-bit number of four vectors, each of which holds a pixel of each block, as pixels.
HWY_INLINE PixelVec third_bytes(IntVec p0, IntVec p1, IntVec p2, IntVec p3) {
    alignas(16) static constexpr std::uint8_t kOrder[16] = {0, 4, 8, 12, 2, 6, 10, 14,
                                                            1, 5, 9, 13, 3, 7, 11, 15};
    const PixelTag d;
    const ByteTag d8;
    const ShortTag d16;
    const auto both = [&](IntVec even, IntVec odd) {
        return hn::OddEven(hn::BitCast(d16, odd), hn::BitCast(d16, hn::ShiftRight<16>(even)));
    };
    const auto mixed = hn::Or(both(p0, p1), hn::ShiftLeft<8>(both(p2, p3)));
    return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(d8, mixed), hn::LoadDup128(d8, kOrder)));
}

// Mixes two rows of sums to a row of whole vectors of pixels. `weights`: of the upper row, below that of the
// lower one, 16 bits each.
template <bool kStreaming>
HWY_INLINE void mix_sums(const std::int16_t* upper, const std::int16_t* lower, std::uint32_t weights,
                         Pixel* to, std::int32_t count) {
    const PixelTag d;
    const IntTag di;
    const ShortTag d16;
    const auto pair = hn::BitCast(d16, hn::Set(d, weights));
    // Takes the bias of the sums away again, and rounds.
    const auto start = hn::Set(di, (0x8000 << 8) + 0x8000);
    for (std::int32_t x = 0; x < count; x += kLanes, upper += 4 * kLanes, lower += 4 * kLanes) {
        const auto upper0 = hn::LoadU(d16, upper);
        const auto upper1 = hn::LoadU(d16, upper + 2 * kLanes);
        const auto lower0 = hn::LoadU(d16, lower);
        const auto lower1 = hn::LoadU(d16, lower + 2 * kLanes);
        const PixelVec pixels =
            third_bytes(add_products(start, hn::InterleaveLower(d16, upper0, lower0), pair),
                        add_products(start, hn::InterleaveUpper(d16, upper0, lower0), pair),
                        add_products(start, hn::InterleaveLower(d16, upper1, lower1), pair),
                        add_products(start, hn::InterleaveUpper(d16, upper1, lower1), pair));
        if constexpr (kStreaming) {
            hn::Stream(pixels, d, to + x);
        } else {
            hn::StoreU(pixels, d, to + x);
        }
    }
}

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
