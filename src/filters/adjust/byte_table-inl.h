// Lookups of many bytes at once in tables of 256 entries.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_BYTE_TABLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_BYTE_TABLE_INL_H_
#undef PIXVANE_FILTERS_BYTE_TABLE_INL_H_
#else
#define PIXVANE_FILTERS_BYTE_TABLE_INL_H_
#endif

#include "core/pixel_runs-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

#if HWY_TARGET == HWY_AVX3_DL

// The table fills four registers; a permute looks up 64 bytes in two of them by their low seven bits.
class ByteTable {
public:
    explicit ByteTable(const std::uint8_t* table)
        : t0_(hn::LoadU(ByteTag(), table)),
          t1_(hn::LoadU(ByteTag(), table + 64)),
          t2_(hn::LoadU(ByteTag(), table + 128)),
          t3_(hn::LoadU(ByteTag(), table + 192)) {}

    HWY_INLINE ByteVec operator()(ByteVec index) const {
        const __m512i low = _mm512_permutex2var_epi8(t0_.raw, index.raw, t1_.raw);
        const __m512i high = _mm512_permutex2var_epi8(t2_.raw, index.raw, t3_.raw);
        return ByteVec{_mm512_mask_blend_epi8(_mm512_movepi8_mask(index.raw), low, high)};
    }

private:
    ByteVec t0_, t1_, t2_, t3_;
};

// Parts of a value for each pixel of a quad: gathered from the low bytes of its lanes into one vector, so
// that one lookup serves the quad, and spread to all four bytes of the lanes again.
class QuadBytes {
public:
    QuadBytes() {
        HWY_ALIGN std::uint8_t index[64];
        const ByteTag d;
        for (std::size_t i = 0; i < 64; ++i) index[i] = static_cast<std::uint8_t>(4 * (i % 32));
        everyFourth_ = hn::Load(d, index);
        for (std::size_t i = 0; i < 64; ++i) index[i] = static_cast<std::uint8_t>(i / 4);
        fourTimes_ = hn::Load(d, index);
    }

    HWY_INLINE ByteVec gathered(PixelVec v0, PixelVec v1, PixelVec v2, PixelVec v3) const {
        const __m512i first = _mm512_permutex2var_epi8(v0.raw, everyFourth_.raw, v1.raw);
        const __m512i second = _mm512_permutex2var_epi8(v2.raw, everyFourth_.raw, v3.raw);
        return ByteVec{_mm512_mask_blend_epi64(0xF0, first, second)};
    }

    HWY_INLINE PixelQuad spread(ByteVec bytes) const {
        return {spread(bytes, 0), spread(bytes, 16), spread(bytes, 32), spread(bytes, 48)};
    }

private:
    HWY_INLINE PixelVec spread(ByteVec bytes, std::uint8_t first) const {
        const ByteVec index = hn::Add(fourTimes_, hn::Set(ByteTag(), first));
        return PixelVec{_mm512_permutexvar_epi8(index.raw, bytes.raw)};
    }

    ByteVec everyFourth_, fourTimes_;
};

#else

// Sixteen shuffles, one for each 16 entries. Entry block k holds what turns the answer of block k - 1 into
// its own, and answers zero for an index below it, so the exclusive or of all is the entry: an index minus
// 16 k is negative there. Indexes from 128 on run through a second chain of their own.
class ByteTable {
public:
    explicit ByteTable(const std::uint8_t* table) {
        for (std::size_t i = 0; i < 256; ++i) {
            const bool startsChain = i % 128 < 16;
            steps_[i] = static_cast<std::uint8_t>(table[i] ^ (startsChain ? 0 : table[i - 16]));
        }
    }

    HWY_INLINE ByteVec operator()(ByteVec index) const {
        const ByteTag d;
        return hn::Xor(chain(index, steps_), chain(hn::Xor(index, hn::Set(d, 0x80)), steps_ + 128));
    }

private:
    static HWY_INLINE ByteVec chain(ByteVec index, const std::uint8_t* steps) {
        const ByteTag d;
        const hn::RebindToSigned<ByteTag> di;
        const auto sixteen = hn::Set(di, 16);
        auto left = hn::BitCast(di, index);
        ByteVec result = hn::Zero(d);
        for (std::size_t k = 0; k < 8; ++k) {
            const ByteVec block = hn::LoadDup128(d, steps + 16 * k);
            result = hn::Xor(result, hn::TableLookupBytesOr0(block, hn::BitCast(d, left)));
            left = hn::SaturatedSub(left, sixteen);
        }
        return result;
    }

    HWY_ALIGN std::uint8_t steps_[256];
};

#endif

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
