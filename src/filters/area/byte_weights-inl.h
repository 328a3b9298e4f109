// What convolution by products of bytes multiplies with, and how it divides; included once for each
// instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_BYTE_WEIGHTS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_BYTE_WEIGHTS_INL_H_
#undef PIXVANE_FILTERS_BYTE_WEIGHTS_INL_H_
#else
#define PIXVANE_FILTERS_BYTE_WEIGHTS_INL_H_
#endif

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "filters/area/area_plain.h"
#include "filters/area/neighbours-inl.h"

#if HWY_TARGET == HWY_AVX3_DL
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

// How sums come from products with signed bytes.
enum class WeightParts {
    One,      // the weights are bytes
    Added,    // 2^7 times those with the upper parts, and those with the lower ones
    Divided,  // the divisor is a multiple of 2^n: those with the upper parts, and 1/2^n of those with the
              // lower n bits
};

// The weights of a kernel as the products want them. A divisor is never negative: all signs are turned then,
// which leaves the quotient what it was.
struct ByteWeights {
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
        isServed = least >= -8192 && largest <= 8191 && divisor < 16384;
        if (!isServed) return;
        choose_parts(least, largest);
        const auto set = [&](std::int32_t& lower, std::int32_t& upper, int place, std::int32_t weight) {
            const auto turned = static_cast<std::int32_t>(sign) * weight;
            const auto part = [=](std::int32_t value) {
                return static_cast<std::int32_t>(static_cast<std::uint32_t>(value & 0xFF) << (8 * place));
            };
            lower |= part(parts == WeightParts::One ? turned : turned & ((1 << partBits) - 1));
            upper |= part(turned >> partBits);
        };
        for (std::int32_t x = 0; x < side; ++x) {
            for (std::int32_t y = 0; y < std::min(side, 4); ++y)
                set(columns[0][x], columns[1][x], y, kernel.weights[static_cast<std::size_t>(x * side + y)]);
        }
        // For the second of the rows that are made at once: a row further down, of three.
        for (auto& part : columns) {
            for (std::int32_t x = 0; x < side; ++x)
                part[5 + x] = static_cast<std::int32_t>(static_cast<std::uint32_t>(part[x]) << 8);
        }
        for (std::int32_t x = 0; x < side && side > 4; ++x)
            set(lastRow[0][x / 4], lastRow[1][x / 4], x < 4 ? x : 3,
                kernel.weights[static_cast<std::size_t>(x * side + 4)]);
    }

    std::int32_t side;
    std::int64_t divisor = 0;  // of the sums as they come
    bool isServed = false;
    WeightParts parts = WeightParts::One;
    int partBits = 0;  // of the lower part
    // In the lower part and the upper one: up to four rows of each column, then the same from the second row
    // on, and what the fifth row has at the first four columns and, in the fourth byte, at the last.
    std::int32_t columns[2][2 * 5] = {};
    std::int32_t lastRow[2][2] = {};

private:
    void choose_parts(std::int64_t least, std::int64_t largest) {
        if (least >= -128 && largest <= 127) return;
        partBits = 7;
        parts = WeightParts::Added;
        const int zeros = divisor == 0 ? 0 : std::countr_zero(static_cast<std::uint64_t>(divisor));
        if (zeros == 0 || zeros > partBits || least >> zeros < -128 || largest >> zeros > 127) return;
        partBits = zeros;
        parts = WeightParts::Divided;
        divisor >>= zeros;
    }
};

// A sum for each channel of 16 pixels, in the same order.
struct ChannelSums {
    __m512i v[4];
};

// How sums become pixels.
struct Undivided {
    HWY_INLINE PixelVec operator()(const ChannelSums& sum) const {
        return PixelVec{_mm512_packus_epi16(_mm512_packs_epi32(sum.v[0], sum.v[1]),
                                            _mm512_packs_epi32(sum.v[2], sum.v[3]))};
    }
};

// By small divisors.
struct DividedWords {
    static bool serves(std::int64_t divisor) {
        return divisor >= 2 && divisor <= 256 && DividedWords(divisor).quotient.is_exact();
    }

    // What gives more than 255 need not be exact: it stays below 2^15, and packing limits it.
    explicit DividedWords(std::int64_t divisor) : quotient(divisor, 256 * divisor - 1) {}

    HWY_INLINE PixelVec operator()(const ChannelSums& sum) const {
        const auto divided = [&](__m512i a, __m512i b)
                                 HWY_ATTR { return quotient(WordVec{_mm512_packus_epi32(a, b)}).raw; };
        return PixelVec{_mm512_packus_epi16(divided(sum.v[0], sum.v[1]), divided(sum.v[2], sum.v[3]))};
    }

    WordQuotient quotient;
};

// By divisors below 2^14. What matters is less than 2^22 then, and the reciprocal, which is a little too
// large, by far too little to reach the next whole number.
struct DividedFloats {
    explicit DividedFloats(std::int64_t divisor) : reciprocal(1.0F / static_cast<float>(divisor)) {
        if (static_cast<double>(reciprocal) * static_cast<double>(divisor) < 1)
            reciprocal = std::nextafter(reciprocal, 2.0F);
    }
    HWY_INLINE PixelVec operator()(const ChannelSums& sum) const {
        ChannelSums quotients;
        for (int i = 0; i < 4; ++i)
            quotients.v[i] =
                _mm512_cvttps_epi32(_mm512_mul_ps(_mm512_cvtepi32_ps(sum.v[i]), _mm512_set1_ps(reciprocal)));
        return Undivided()(quotients);
    }

    float reciprocal;
};

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // HWY_TARGET == HWY_AVX3_DL

#endif  // include guard for each instruction set
