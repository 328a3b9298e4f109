// Columns of pixels added up with weights, in vector code; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_COLUMNS_INL_H_
#undef PIXVANE_CORE_SCALE_COLUMNS_INL_H_
#else
#define PIXVANE_CORE_SCALE_COLUMNS_INL_H_
#endif

#include <cstdint>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale_products-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

constexpr std::int32_t kColumns = static_cast<std::int32_t>(hn::MaxLanes(PixelTag()));

// Where the lanes of a vector come from if its pixels are seen as rows of kAcross and written as columns.
template <std::int32_t kAcross>
struct ExchangedLanes {
    alignas(64) std::int32_t lanes[kColumns];
    constexpr ExchangedLanes() : lanes() {
        for (std::int32_t i = 0; i < kColumns; ++i)
            lanes[i] = i % kAcross * (kColumns / kAcross) + i / kAcross;
    }
};

template <std::int32_t kAcross>
HWY_INLINE PixelVec exchanged(PixelVec pixels) {
    if constexpr (kColumns == 4) return pixels;
    static constexpr ExchangedLanes<kAcross> kOrder;
    return hn::TableLookupLanes(pixels, hn::SetTableIndices(PixelTag(), kOrder.lanes));
}

// The pixels of a vector in such an order that interleaving its bytes twice gives whole vectors of
// neighbours.
HWY_INLINE PixelVec parted(PixelVec pixels) { return exchanged<4>(pixels); }
// Undoes it.
HWY_INLINE PixelVec joined(PixelVec pixels) { return exchanged<kColumns / 4>(pixels); }

// Four vectors of sums: blue, green, red, alpha of each pixel.
struct Sums {
    IntVec v0, v1, v2, v3;
};

HWY_INLINE Sums load_sums(const std::int32_t* from) {
    const IntTag d;
    return {hn::LoadU(d, from), hn::LoadU(d, from + kColumns), hn::LoadU(d, from + 2 * kColumns),
            hn::LoadU(d, from + 3 * kColumns)};
}

HWY_INLINE void store_sums(const Sums& sums, std::int32_t* to) {
    const IntTag d;
    hn::StoreU(sums.v0, d, to);
    hn::StoreU(sums.v1, d, to + kColumns);
    hn::StoreU(sums.v2, d, to + 2 * kColumns);
    hn::StoreU(sums.v3, d, to + 3 * kColumns);
}

#if HWY_TARGET == HWY_AVX3_DL
// Channels of the pixels in vector `part` of the sums: of one row in the lower halves, of the other in the
// upper.
struct PairOrder {
    alignas(64) std::uint8_t bytes[64];
    constexpr explicit PairOrder(std::uint8_t part) : bytes() {
        for (std::uint8_t i = 0; i < 16; ++i) {
            bytes[4 * i] = static_cast<std::uint8_t>(16 * part + i);
            bytes[4 * i + 2] = static_cast<std::uint8_t>(64 + 16 * part + i);
        }
    }
};

template <std::uint8_t kPart>
HWY_INLINE ShortVec channel_pairs(PixelVec upper, PixelVec lower) {
    static constexpr PairOrder kOrder(kPart);
    constexpr __mmask64 kUsed = 0x5555555555555555;
    const __m512i order = _mm512_load_si512(kOrder.bytes);
    return ShortVec{_mm512_maskz_permutex2var_epi8(kUsed, upper.raw, order, lower.raw)};
}

HWY_INLINE void add_opaque(Sums& sums, PixelVec upper, PixelVec lower, ShortVec weights) {
    sums.v0 = add_products(sums.v0, channel_pairs<0>(upper, lower), weights);
    sums.v1 = add_products(sums.v1, channel_pairs<1>(upper, lower), weights);
    sums.v2 = add_products(sums.v2, channel_pairs<2>(upper, lower), weights);
    sums.v3 = add_products(sums.v3, channel_pairs<3>(upper, lower), weights);
}
#else
// Adds two rows of opaque pixels; `weights` has the one of the upper row below that of the lower one.
HWY_INLINE void add_opaque(Sums& sums, PixelVec upper, PixelVec lower, ShortVec weights) {
    const ByteTag d8;
    const ShortTag d16;
    const auto zero = hn::Zero(d8);
    const auto p = hn::BitCast(d8, parted(upper));
    const auto q = hn::BitCast(d8, parted(lower));
    const auto first = hn::InterleaveLower(d8, p, q);
    const auto second = hn::InterleaveUpper(d8, p, q);
    const auto add = [&](IntVec sum, ByteVec pairs) {
        return add_products(sum, hn::BitCast(d16, pairs), weights);
    };
    sums.v0 = add(sums.v0, hn::InterleaveLower(d8, first, zero));
    sums.v1 = add(sums.v1, hn::InterleaveUpper(d8, first, zero));
    sums.v2 = add(sums.v2, hn::InterleaveLower(d8, second, zero));
    sums.v3 = add(sums.v3, hn::InterleaveUpper(d8, second, zero));
}
#endif

// Adds a row of pixels: colours times alpha, and alpha.
HWY_INLINE void add_weighted(Sums& sums, PixelVec pixels, IntVec weight) {
    alignas(16) static constexpr std::uint8_t kAlphas[16] = {6,  0x80, 6,  0x80, 6,  0x80, 0x80, 0x80,
                                                             14, 0x80, 14, 0x80, 14, 0x80, 0x80, 0x80};
    const IntTag d;
    const ByteTag d8;
    const ShortTag d16;
    const auto zero = hn::Zero(d8);
    const auto zero16 = hn::Zero(d16);
    const auto alphas = hn::LoadDup128(d8, kAlphas);
    const auto one =
        hn::BitCast(d16, hn::Set(hn::Repartition<std::uint64_t, IntTag>(), std::uint64_t{1} << 48));
    const auto times_alpha = [&](ByteVec channels) {
        const auto factors = hn::Or(hn::BitCast(d16, hn::TableLookupBytesOr0(channels, alphas)), one);
        return hn::Mul(hn::BitCast(d16, channels), factors);
    };
    const auto add = [&](IntVec sum, ShortVec values) {
        return hn::Add(sum, hn::Mul(hn::BitCast(d, values), weight));
    };
    const auto p = hn::BitCast(d8, pixels);
    const auto first = times_alpha(hn::InterleaveLower(d8, p, zero));
    const auto second = times_alpha(hn::InterleaveUpper(d8, p, zero));
    sums.v0 = add(sums.v0, hn::InterleaveLower(d16, first, zero16));
    sums.v1 = add(sums.v1, hn::InterleaveUpper(d16, first, zero16));
    sums.v2 = add(sums.v2, hn::InterleaveLower(d16, second, zero16));
    sums.v3 = add(sums.v3, hn::InterleaveUpper(d16, second, zero16));
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
