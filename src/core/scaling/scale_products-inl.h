// Sums of products of 8-bit and 16-bit numbers in vector code, and how they become pixels; included once for
// each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_PRODUCTS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_PRODUCTS_INL_H_
#undef PIXVANE_CORE_SCALE_PRODUCTS_INL_H_
#else
#define PIXVANE_CORE_SCALE_PRODUCTS_INL_H_
#endif

#include <cstdint>

#include "core/pixel_runs-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

using ShortTag = hn::Repartition<std::int16_t, PixelTag>;
using ShortVec = hn::Vec<ShortTag>;

// To each 32-bit number, the products of its two 16-bit halves.
HWY_INLINE IntVec add_products(IntVec sum, ShortVec a, ShortVec b) {
    const IntTag d;
#if HWY_ARCH_X86
    IntVec unused = hn::Zero(d);
    return hn::ReorderWidenMulAccumulate(d, a, b, sum, unused);
#else
    const auto low = [&](ShortVec v) { return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(d, v))); };
    const auto high = [&](ShortVec v) { return hn::ShiftRight<16>(hn::BitCast(d, v)); };
    return hn::Add(sum, hn::Add(hn::Mul(low(a), low(b)), hn::Mul(high(a), high(b))));
#endif
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

// Two vectors of sums in 16 bits, whose upper bytes are channels, as pixels.
HWY_INLINE PixelVec upper_bytes(ShortVec lower, ShortVec upper) {
    alignas(16) static constexpr std::uint8_t kOrder[16] = {0, 2, 4, 6, 8, 10, 12, 14,
                                                            1, 3, 5, 7, 9, 11, 13, 15};
    const ByteTag d8;
    const hn::RebindToUnsigned<ShortTag> du16;
    const auto mixed =
        hn::OddEven(hn::BitCast(d8, upper), hn::BitCast(d8, hn::ShiftRight<8>(hn::BitCast(du16, lower))));
    return hn::BitCast(PixelTag(), hn::TableLookupBytes(mixed, hn::LoadDup128(d8, kOrder)));
}

// The sum of the products of each two neighbouring bytes. No sum is beyond 16 bits.
HWY_INLINE ShortVec byte_products(ByteVec numbers, ByteVec signedNumbers) {
#if HWY_ARCH_X86 && HWY_TARGET <= HWY_AVX3
    return ShortVec{_mm512_maddubs_epi16(numbers.raw, signedNumbers.raw)};
#elif HWY_ARCH_X86 && HWY_TARGET <= HWY_AVX2
    return ShortVec{_mm256_maddubs_epi16(numbers.raw, signedNumbers.raw)};
#elif HWY_ARCH_X86 && HWY_TARGET <= HWY_SSSE3
    return ShortVec{_mm_maddubs_epi16(numbers.raw, signedNumbers.raw)};
#else
    const ShortTag d;
    const auto a = hn::BitCast(d, numbers), b = hn::BitCast(d, signedNumbers);
    const hn::RebindToUnsigned<ShortTag> du;
    const auto even = hn::Mul(hn::And(a, hn::Set(d, 0xFF)), hn::ShiftRight<8>(hn::ShiftLeft<8>(b)));
    return hn::Add(even,
                   hn::Mul(hn::BitCast(d, hn::ShiftRight<8>(hn::BitCast(du, a))), hn::ShiftRight<8>(b)));
#endif
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
