// Convolution by products of bytes; included once for each instruction set.
//
// Four rows are interleaved so that the bytes of a channel lie together, in each lane of a vector those of
// one column: an instruction multiplies them all and adds them up. Weights of more than seven bits and a
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
#include <cmath>
#include <cstdint>
#include <cstring>

#include "filters/area_plain.h"
#include "filters/neighbours-inl.h"

#if HWY_TARGET == HWY_AVX3_DL
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// All processors of this target have these instructions, though it doesn't name them.
#undef PIXVANE_BYTE_PRODUCTS
#define PIXVANE_BYTE_PRODUCTS __attribute__((target(HWY_TARGET_STR ",avx512vnni")))

// The weights of a kernel as the products want them. A divisor is never negative: all signs are turned then,
// which leaves the quotient what it was.
struct ByteWeights {
    static constexpr std::int32_t kPartBits = 7;

    explicit ByteWeights(const Kernel& kernel) : side(kernel.side) {
        for (const std::int32_t weight : kernel.weights) divisor += weight;
        const std::int64_t sign = divisor < 0 ? -1 : 1;
        divisor *= sign;
        std::int64_t least = 0;
        std::int64_t largest = 0;
        for (const std::int32_t weight : kernel.weights) {
            least = std::min(least, sign * weight);
            largest = std::max(largest, sign * weight);
        }
        isSmall = least >= -128 && largest <= 127;
        isServed = least >= -8192 && largest <= 8191 && divisor < 16384;
        if (!isServed) return;
        const auto set = [&](std::int32_t& lower, std::int32_t& upper, int place, std::int32_t weight) {
            const auto turned = static_cast<std::int32_t>(sign) * weight;
            const auto part = [=](std::int32_t value) {
                return static_cast<std::int32_t>(static_cast<std::uint32_t>(value & 0xFF) << (8 * place));
            };
            lower |= part(isSmall ? turned : turned & ((1 << kPartBits) - 1));
            upper |= part(turned >> kPartBits);
        };
        for (std::int32_t x = 0; x < side; ++x) {
            for (std::int32_t y = 0; y < std::min(side, 4); ++y)
                set(columns[0][x], columns[1][x], y, kernel.weights[static_cast<std::size_t>(x * side + y)]);
        }
        for (std::int32_t x = 0; x < side && side > 4; ++x)
            set(lastRow[0][x / 4], lastRow[1][x / 4], x < 4 ? x : 3,
                kernel.weights[static_cast<std::size_t>(x * side + 4)]);
    }

    std::int32_t side;
    std::int64_t divisor = 0;
    bool isSmall = false;  // all in the lower part alone
    bool isServed = false;
    // In the lower part and the upper one: up to four rows of each column, and what the fifth row has at the
    // first four columns and, in the fourth byte, at the last.
    std::int32_t columns[2][5] = {};
    std::int32_t lastRow[2][2] = {};
};

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

// How sums become pixels: each of the four vectors has a pixel in each block.
struct Undivided {
    HWY_INLINE PixelVec operator()(const __m512i (&sum)[4]) const {
        return PixelVec{
            _mm512_packus_epi16(_mm512_packs_epi32(sum[0], sum[1]), _mm512_packs_epi32(sum[2], sum[3]))};
    }
};

struct DividedWords {
    static constexpr std::int64_t kLargestDivisor = 256;

    explicit DividedWords(std::int64_t divisor)
        : limit(static_cast<std::uint16_t>(256 * divisor - 1)), quotient(divisor, limit) {}

    HWY_INLINE PixelVec operator()(const __m512i (&sum)[4]) const {
        const auto divided = [&](__m512i a, __m512i b) HWY_ATTR {
            return quotient(hn::Min(WordVec{_mm512_packus_epi32(a, b)}, hn::Set(WordTag(), limit))).raw;
        };
        return PixelVec{_mm512_packus_epi16(divided(sum[0], sum[1]), divided(sum[2], sum[3]))};
    }

    std::uint16_t limit;
    WordQuotient quotient;
};

// By divisors below 2^14. What matters is less than 2^22 then, and the reciprocal, which is a little too
// large, by far too little to reach the next whole number.
struct DividedFloats {
    explicit DividedFloats(std::int64_t divisor) : reciprocal(1.0F / static_cast<float>(divisor)) {
        if (static_cast<double>(reciprocal) * static_cast<double>(divisor) < 1)
            reciprocal = std::nextafter(reciprocal, 2.0F);
    }
    HWY_INLINE PixelVec operator()(const __m512i (&sum)[4]) const {
        __m512i quotients[4];
        for (int i = 0; i < 4; ++i)
            quotients[i] =
                _mm512_cvttps_epi32(_mm512_mul_ps(_mm512_cvtepi32_ps(sum[i]), _mm512_set1_ps(reciprocal)));
        return Undivided()(quotients);
    }

    float reciprocal;
};

template <bool kFive, bool kSmall, class Divide>
class ByteRows {
public:
    ByteRows(ConstPixelBuffer source, const ByteWeights& weights, const Divide& divide)
        : source_(source), weights_(weights), divide_(divide) {}

    PIXVANE_BYTE_PRODUCTS HWY_NOINLINE void make(PixelBuffer target, std::int32_t y, bool streaming) {
        for (std::int32_t i = 0; i < 5; ++i)
            rows_[i] = source_.row(inside(y + i - (kFive ? 2 : 1), source_.height));
        Pixel* to = target.row(y);
        const std::int32_t width = source_.width;
        const auto offset = static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(to) % 64 / 4);
        const Pixel* ahead = source_.row(inside(y + kReach + 1, source_.height));
        Part before = load(-offset - kLanes);
        Part here = load(-offset);
        for (std::int32_t x = -offset; x < width; x += kLanes) {
            // What the next row will want first.
            hwy::Prefetch(ahead + std::max(0, x));
            const Part next = load(x + kLanes);
            const PixelVec made = opaque(mixed(before, here, next));
            if (HWY_UNLIKELY(x < 0 || x + kLanes > width)) {
                store_inside(made, to, x);
            } else if (streaming) {
                hn::Stream(made, PixelTag(), to + x);
            } else {
                hn::Store(made, PixelTag(), to + x);
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
            return {
                interleaved(load(rows_[0], x), load(rows_[1], x), load(rows_[2], x), hn::Zero(PixelTag())),
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

    PIXVANE_BYTE_PRODUCTS HWY_INLINE PixelVec mixed(const Part& before, const Part& here,
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
        __m512i sums[4];
        for (int i = 0; i < 4; ++i) sums[i] = _mm512_setzero_si512();
        if constexpr (!kSmall) {
            add_part(weights_.columns[1], weights_.lastRow[1], columns, here, next, sums);
            for (int i = 0; i < 4; ++i) sums[i] = _mm512_slli_epi32(sums[i], ByteWeights::kPartBits);
        }
        add_part(weights_.columns[0], weights_.lastRow[0], columns, here, next, sums);
        return divide_(sums);
    }

    PIXVANE_BYTE_PRODUCTS static HWY_INLINE void add_part(const std::int32_t (&columnWeights)[5],
                                                          const std::int32_t (&rowWeights)[2],
                                                          const __m512i (&columns)[8], const Part& here,
                                                          const Part& next, __m512i (&sums)[4]) {
        for (int x = 0; x <= 2 * kReach; ++x) {
            for (int i = 0; i < 4; ++i)
                sums[i] = add_products(sums[i], columns[2 + i + x - kReach], columnWeights[x]);
        }
        if constexpr (kFive) {
            const auto* v = here.lastRow.v;
            const __m512i behind[4] = {v[1], v[2], v[3], _mm512_alignr_epi64(next.lastRow.v[0], v[0], 2)};
            for (int i = 0; i < 4; ++i) {
                sums[i] = add_products(sums[i], v[i], rowWeights[0]);
                sums[i] = add_products(sums[i], behind[i], rowWeights[1]);
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
        for (std::int32_t y = first; y < last; ++y) rows.make(target, y, streaming);
    };
    if (weights.side == 5) {
        if (weights.isSmall) {
            run(ByteRows<true, true, Divide>(source, weights, divide));
        } else {
            run(ByteRows<true, false, Divide>(source, weights, divide));
        }
    } else if (weights.isSmall) {
        run(ByteRows<false, true, Divide>(source, weights, divide));
    } else {
        run(ByteRows<false, false, Divide>(source, weights, divide));
    }
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
    if (weights.divisor <= DividedWords::kLargestDivisor) {
        const DividedWords divide(weights.divisor);
        if (divide.quotient.is_exact()) {
            convolve_bytes(source, target, weights, divide, first, last);
            return true;
        }
    }
    convolve_bytes(source, target, weights, DividedFloats(weights.divisor), first, last);
    return true;
}

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // HWY_TARGET == HWY_AVX3_DL

#endif  // include guard for each instruction set
