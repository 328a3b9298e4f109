// Convolution by products of bytes; included once for each instruction set.
//
// Four rows are interleaved so that the bytes of a channel lie together, in each lane of a vector those of
// one column: an instruction multiplies them all and adds them up. Where a kernel has but three rows, two
// rows of results come from the same four. Weights of more than seven bits and a
// sign are taken in two parts. A vector has every fourth pixel, so that most neighbours of its pixels are
// vectors, too, and packing the sums puts the pixels in order again.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_CONVOLVE_BYTES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_CONVOLVE_BYTES_INL_H_
#undef PIXVANE_FILTERS_CONVOLVE_BYTES_INL_H_
#else
#define PIXVANE_FILTERS_CONVOLVE_BYTES_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "filters/area/byte_weights-inl.h"

#if HWY_TARGET == HWY_AVX3_DL
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// All processors of this target have these instructions, though it doesn't name them.
#undef PIXVANE_BYTE_PRODUCTS
#define PIXVANE_BYTE_PRODUCTS __attribute__((target(HWY_TARGET_STR ",avx512vnni")))

// Pixels 0, 4, 8, 12 of a vector of 16, then 1, 5, 9, 13 and so on, with four bytes for each channel.
struct ByteQuads {
    __m512i v[4];
};

HWY_INLINE ByteQuads interleaved(PixelVec a, PixelVec b, PixelVec c, PixelVec d) {
    const __m512i abLow = _mm512_unpacklo_epi8(a.raw, b.raw);
    const __m512i abHigh = _mm512_unpackhi_epi8(a.raw, b.raw);
    const __m512i cdLow = _mm512_unpacklo_epi8(c.raw, d.raw);
    const __m512i cdHigh = _mm512_unpackhi_epi8(c.raw, d.raw);
    return {{_mm512_unpacklo_epi16(abLow, cdLow), _mm512_unpackhi_epi16(abLow, cdLow),
             _mm512_unpacklo_epi16(abHigh, cdHigh), _mm512_unpackhi_epi16(abHigh, cdHigh)}};
}

template <bool kFive, WeightParts kParts, class Divide>
class ByteRows {
public:
    ByteRows(ConstPixelBuffer source, const ByteWeights& weights, const Divide& divide)
        : source_(source), weights_(weights), divide_(divide) {}

    // How many rows make() makes.
    static constexpr std::int32_t kRows = kFive ? 1 : 2;

    // Rows from y on, below `last`.
    PIXVANE_BYTE_PRODUCTS HWY_NOINLINE void make(PixelBuffer target, std::int32_t y, std::int32_t last,
                                                 bool streaming) {
        for (std::int32_t i = 0; i < 5; ++i) rows_[i] = source_.row(inside(y + i - kReach, source_.height));
        const bool single = kRows == 1 || y + 1 == last;
        Pixel* const to[2] = {target.row(y), single ? nullptr : target.row(y + 1)};
        const std::int32_t width = source_.width;
        const auto offset_of = [](const Pixel* row) {
            return static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(row) % 64 / 4);
        };
        const std::int32_t offset = offset_of(to[0]);
        const bool aligned = single || offset_of(to[1]) == offset;
        const Pixel* ahead[2] = {source_.row(inside(y + kReach + kRows, source_.height)),
                                 source_.row(inside(y + kReach + kRows + 1, source_.height))};
        const Divide divide = divide_;  // in registers, whatever the stores are feared to change
        Part before = load(-offset - kLanes);
        Part here = load(-offset);
        for (std::int32_t x = -offset; x < width; x += kLanes) {
            // What the next rows will want first.
            for (std::int32_t i = 0; i < kRows; ++i) fetch_line(ahead[i] + std::max(0, x));
            const Part next = load(x + kLanes);
            const bool isWhole = HWY_LIKELY(x >= 0 && x + kLanes <= width);
            const auto store = [&](PixelVec made, Pixel* row) HWY_ATTR {
                if (!isWhole) return store_inside(made, row, x);
                if (streaming && aligned) return hn::Stream(made, PixelTag(), row + x);
                hn::StoreU(made, PixelTag(), row + x);
            };
            store(opaque(divide(sums<0>(before, here, next))), to[0]);
            if constexpr (kRows == 2) {
                if (!single) store(opaque(divide(sums<1>(before, here, next))), to[1]);
            }
            before = here;
            here = next;
        }
    }

private:
    static constexpr std::int32_t kLanes = 16;
    static constexpr std::int32_t kReach = kFive ? 2 : 1;

    // 16 pixels: their columns, and the fifth row from two pixels before each to one behind it.
    struct Part {
        ByteQuads columns;
        ByteQuads lastRow;
    };

    template <class Load>
    HWY_INLINE Part load_by(const Load& load, std::int32_t x) const {
        if constexpr (!kFive) {
            return {interleaved(load(rows_[0], x), load(rows_[1], x), load(rows_[2], x), load(rows_[3], x)),
                    {}};
        }
        return {interleaved(load(rows_[0], x), load(rows_[1], x), load(rows_[2], x), load(rows_[3], x)),
                interleaved(load(rows_[4], x - 2), load(rows_[4], x - 1), load(rows_[4], x),
                            load(rows_[4], x + 1))};
    }
    HWY_INLINE Part load(std::int32_t x) const {
        if (HWY_LIKELY(x >= kReach && x + kLanes + kReach <= source_.width)) return load_by(InTheMidst(), x);
        return load_near_ends(x);
    }
    HWY_NOINLINE Part load_near_ends(std::int32_t x) const { return load_by(NearTheEnds{source_.width}, x); }

    PIXVANE_BYTE_PRODUCTS static HWY_INLINE __m512i add_products(__m512i sum, __m512i bytes,
                                                                 std::int32_t weights) {
        return _mm512_dpbusd_epi32(sum, bytes, _mm512_set1_epi32(weights));
    }

    // Row kRow of those that are made at once.
    template <int kRow>
    PIXVANE_BYTE_PRODUCTS HWY_INLINE ChannelSums sums(const Part& before, const Part& here,
                                                      const Part& next) const {
        const auto* u = here.columns.v;
        // Pixels from two before to two behind the first four.
        const __m512i columns[8] = {_mm512_alignr_epi64(u[2], before.columns.v[2], 6),
                                    _mm512_alignr_epi64(u[3], before.columns.v[3], 6),
                                    u[0],
                                    u[1],
                                    u[2],
                                    u[3],
                                    _mm512_alignr_epi64(next.columns.v[0], u[0], 2),
                                    _mm512_alignr_epi64(next.columns.v[1], u[1], 2)};
        ChannelSums sums;
        for (int i = 0; i < 4; ++i) sums.v[i] = _mm512_setzero_si512();
        const auto add = [&](int part) PIXVANE_BYTE_PRODUCTS {
            add_part<kRow>(weights_.columns[part], weights_.lastRow[part], columns, here, next, sums);
        };
        const __m512i bits = _mm512_set1_epi32(weights_.partBits);
        if constexpr (kParts == WeightParts::Added) {
            add(1);
            for (__m512i& sum : sums.v) sum = _mm512_sllv_epi32(sum, bits);
        }
        add(0);
        if constexpr (kParts == WeightParts::Divided) {
            for (__m512i& sum : sums.v) sum = _mm512_srlv_epi32(sum, bits);
            add(1);
        }
        return sums;
    }

    template <int kRow>
    PIXVANE_BYTE_PRODUCTS static HWY_INLINE void add_part(const std::int32_t (&columnWeights)[2 * 5],
                                                          const std::int32_t (&rowWeights)[2],
                                                          const __m512i (&columns)[8], const Part& here,
                                                          const Part& next, ChannelSums& sums) {
        for (int x = 0; x <= 2 * kReach; ++x) {
            for (int i = 0; i < 4; ++i)
                sums.v[i] = add_products(sums.v[i], columns[2 + i + x - kReach], columnWeights[5 * kRow + x]);
        }
        if constexpr (kFive) {
            const auto* v = here.lastRow.v;
            const __m512i behind[4] = {v[1], v[2], v[3], _mm512_alignr_epi64(next.lastRow.v[0], v[0], 2)};
            for (int i = 0; i < 4; ++i) {
                sums.v[i] = add_products(sums.v[i], v[i], rowWeights[0]);
                sums.v[i] = add_products(sums.v[i], behind[i], rowWeights[1]);
            }
        }
    }

    // Those of 16 pixels from place x on that are inside.
    HWY_NOINLINE void store_inside(PixelVec pixels, Pixel* to, std::int32_t x) const {
        HWY_ALIGN Pixel buffer[kLanes];
        hn::Store(pixels, PixelTag(), buffer);
        const std::int32_t first = std::max(0, x);
        const std::int32_t last = std::min(x + kLanes, source_.width);
        std::memcpy(to + first, buffer + (first - x), static_cast<std::size_t>(last - first) * sizeof(Pixel));
    }

    ConstPixelBuffer source_;
    const ByteWeights& weights_;
    const Divide& divide_;
    const Pixel* rows_[5] = {};
};

template <class Divide>
void convolve_bytes(ConstPixelBuffer source, PixelBuffer target, const ByteWeights& weights,
                    const Divide& divide, std::int32_t first, std::int32_t last) {
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    const auto run = [&](auto rows) {
        for (std::int32_t y = first; y < last; y += rows.kRows) rows.make(target, y, last, streaming);
    };
    const auto run_parts = [&]<bool kFive>() {
        switch (weights.parts) {
            case WeightParts::One:
                return run(ByteRows<kFive, WeightParts::One, Divide>(source, weights, divide));
            case WeightParts::Added:
                return run(ByteRows<kFive, WeightParts::Added, Divide>(source, weights, divide));
            case WeightParts::Divided:
                return run(ByteRows<kFive, WeightParts::Divided, Divide>(source, weights, divide));
        }
    };
    weights.side == 5 ? run_parts.template operator()<true>() : run_parts.template operator()<false>();
    if (streaming) hwy::FlushStream();
}

// Returns false if the kernel's weights or their sum are too large for this.
inline bool convolve_bytes(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel,
                           std::int32_t first, std::int32_t last) {
    const ByteWeights weights(kernel);
    if (!weights.isServed) return false;
    if (weights.divisor <= 1) {
        convolve_bytes(source, target, weights, Undivided(), first, last);
        return true;
    }
    if (DividedWords::serves(weights.divisor)) {
        convolve_bytes(source, target, weights, DividedWords(weights.divisor), first, last);
        return true;
    }
    convolve_bytes(source, target, weights, DividedFloats(weights.divisor), first, last);
    return true;
}

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // HWY_TARGET == HWY_AVX3_DL

#endif  // include guard for each instruction set
