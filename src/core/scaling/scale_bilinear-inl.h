// Bilinear scaling of opaque rows in vector code; included once for each instruction set.
//
// Sums of channels times weights take 16 bits along a row (255 * 256) and 24 bits in all: rows are widened
// first, each source row once, then neighbours among them are mixed. No rounding comes before the last one.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_BILINEAR_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_BILINEAR_INL_H_
#undef PIXVANE_CORE_SCALE_BILINEAR_INL_H_
#else
#define PIXVANE_CORE_SCALE_BILINEAR_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_products-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

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

// How many bits the weights of a row and those of a column take. Where both make 8 or less, as for all powers
// of two up to 8, the sums fit 16 bits: then they are made so that they take 8 together.
struct WeightBits {
    std::int32_t row = 8;
    std::int32_t column = 8;

    WeightBits(const ScaleAxis& x, const ScaleAxis& y) {
        const std::int32_t least = 8 - x.unused_bits();
        if (least > y.unused_bits()) return;
        row = least;
        column = 8 - least;
    }
    bool is_short() const { return row + column == 8; }
};

// Sums of pixels first..last of a row: for each vector of pixels those of the lower halves of its blocks,
// then those of the upper halves. Sums of 16 bits are less 2^15 so that they fit signed numbers, unless the
// weights are short. Returns whether all pixels that were used are opaque. `next` pixels further on is the
// row after the next one, which is fetched meanwhile.
template <bool kShrinks, bool kShort>
HWY_INLINE bool widen_row(const Pixel* source, std::int32_t width, const ScaleAxis& axis, WeightBits bits,
                          std::int32_t first, std::int32_t last, std::int16_t* sums) {
    const PixelTag d;
    const ByteTag d8;
    const ShortTag d16;
    const hn::RebindToUnsigned<ShortTag> du16;
    const WindowedRow row(source, width);
    const auto zero = hn::Zero(d8);
    const auto bias = hn::Set(d16, static_cast<std::int16_t>(-0x8000));
    PixelVec common = hn::Set(d, ~0u);
    sums += std::ptrdiff_t{4} * first;
    for (std::int32_t x = first; x < last; x += kLanes, sums += 4 * kLanes) {
        const TapPair taps = load_taps<kShrinks>(row, axis.left() + x);
        common = hn::And(common, hn::And(taps.left, taps.right));
        const auto left = hn::BitCast(d8, taps.left);
        const auto right = hn::BitCast(d8, taps.right);
        PixelVec weights = hn::LoadU(d, axis.right_weights() + x);
        if constexpr (kShort)
            weights = hn::BitCast(d, hn::ShiftRightSame(hn::BitCast(du16, weights), 8 - bits.row));
        const auto mix = [&](ByteVec left1, ByteVec right1, ByteVec left256, PixelVec weight) {
            const auto l = hn::BitCast(d16, left1);
            const auto part = hn::Mul(hn::Sub(hn::BitCast(d16, right1), l), hn::BitCast(d16, weight));
            if constexpr (kShort) {
                return hn::Add(hn::ShiftLeftSame(l, bits.row), part);
            } else {
                return hn::Add(hn::Xor(hn::BitCast(d16, left256), bias), part);
            }
        };
        hn::StoreU(mix(hn::InterleaveLower(d8, left, zero), hn::InterleaveLower(d8, right, zero),
                       hn::InterleaveLower(d8, zero, left), hn::InterleaveLower(d, weights, weights)),
                   d16, sums);
        hn::StoreU(mix(hn::InterleaveUpper(d8, left, zero), hn::InterleaveUpper(d8, right, zero),
                       hn::InterleaveUpper(d8, zero, left), hn::InterleaveUpper(d, weights, weights)),
                   d16, sums + 2 * kLanes);
    }
    return hn::AllTrue(d, hn::Eq(hn::ShiftRight<24>(common), hn::Set(d, 0xFF)));
}

// A vector of pixels from two rows of sums.
struct MixLong {
    ShortVec weights;

    MixLong(const Taps& taps, WeightBits) {
        const auto both = static_cast<std::uint32_t>(taps.firstWeight | taps.lastWeight << 16);
        weights = hn::BitCast(ShortTag(), hn::Set(PixelTag(), both));
    }
    HWY_INLINE PixelVec operator()(ShortVec upper0, ShortVec upper1, ShortVec lower0, ShortVec lower1) const {
        const ShortTag d;
        // Takes the bias of the sums away again, and rounds.
        const auto start = hn::Set(IntTag(), (0x8000 << 8) + 0x8000);
        return third_bytes(add_products(start, hn::InterleaveLower(d, upper0, lower0), weights),
                           add_products(start, hn::InterleaveUpper(d, upper0, lower0), weights),
                           add_products(start, hn::InterleaveLower(d, upper1, lower1), weights),
                           add_products(start, hn::InterleaveUpper(d, upper1, lower1), weights));
    }
};

struct MixShort {
    ShortVec upperWeight, lowerWeight;

    MixShort(const Taps& taps, WeightBits bits) {
        const std::int32_t unused = 8 - bits.column;
        upperWeight = hn::Set(ShortTag(), static_cast<std::int16_t>(taps.firstWeight >> unused));
        lowerWeight = hn::Set(ShortTag(), static_cast<std::int16_t>(taps.lastWeight >> unused));
    }
    HWY_INLINE PixelVec operator()(ShortVec upper0, ShortVec upper1, ShortVec lower0, ShortVec lower1) const {
        const auto half = hn::Set(ShortTag(), 128);
        const auto mix = [&](ShortVec upper, ShortVec lower) {
            return hn::Add(hn::Add(hn::Mul(upper, upperWeight), half), hn::Mul(lower, lowerWeight));
        };
        return upper_bytes(mix(upper0, lower0), mix(upper1, lower1));
    }
};

// Mixes two rows of sums to pixels first..last of a row, in whole vectors.
template <bool kStreaming, class Mix>
HWY_INLINE void mix_sums(const std::int16_t* upper, const std::int16_t* lower, const Mix& mix, Pixel* to,
                         std::int32_t first, std::int32_t last) {
    const PixelTag d;
    const ShortTag d16;
    upper += std::ptrdiff_t{4} * first;
    lower += std::ptrdiff_t{4} * first;
    for (std::int32_t x = first; x < last; x += kLanes, upper += 4 * kLanes, lower += 4 * kLanes) {
        const PixelVec pixels = mix(hn::LoadU(d16, upper), hn::LoadU(d16, upper + 2 * kLanes),
                                    hn::LoadU(d16, lower), hn::LoadU(d16, lower + 2 * kLanes));
        if constexpr (kStreaming) {
            hn::Stream(pixels, d, to + x);
        } else {
            hn::StoreU(pixels, d, to + x);
        }
    }
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
