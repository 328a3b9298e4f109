// Sums along rows, tried in floats; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_FLOATS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_FLOATS_INL_H_
#undef PIXVANE_CORE_SCALE_FLOATS_INL_H_
#else
#define PIXVANE_CORE_SCALE_FLOATS_INL_H_
#endif

#include <algorithm>
#include <cstdint>

#include "core/scaling/scale_axis.h"
#include "core/scaling/scale_columns-inl.h"
#include "core/scratch.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Four sums of one pixel in each block of 16 bytes, as floats.
using FloatTag = hn::RebindToFloat<IntTag>;
using FloatVec = hn::Vec<FloatTag>;
constexpr std::int32_t kGroup = kColumns / 4;

// Repeats each of the first numbers of a vector throughout a block.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V block_weights(D d, const hn::TFromD<D>* weights) {
    struct Order {
        alignas(64) std::int32_t lanes[kColumns];
        constexpr Order() : lanes() {
            for (std::int32_t i = 0; i < kColumns; ++i) lanes[i] = i / 4;
        }
    };
    static constexpr Order kOrder;
    return hn::TableLookupLanes(hn::LoadU(d, weights), hn::SetTableIndices(d, kOrder.lanes));
}

// The sums of the blocks of kGroup vectors, in the blocks of one.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V block_sums(D d, const V (&v)[kGroup]) {
    if constexpr (kGroup == 1) {
        return v[0];
    } else {
        const auto halves = [&](V a, V b) {
            return hn::Add(hn::ConcatLowerLower(d, b, a), hn::ConcatUpperUpper(d, b, a));
        };
        if constexpr (kGroup == 2) {
            return halves(v[0], v[1]);
        } else {
            const V even = halves(v[0], v[2]);
            const V odd = halves(v[1], v[3]);
            return hn::Add(hn::OddEvenBlocks(hn::SwapAdjacentBlocks(odd), even),
                           hn::OddEvenBlocks(odd, hn::SwapAdjacentBlocks(even)));
        }
    }
}

// The low bytes of all lanes, with a pixel in each block of each vector, as pixels.
HWY_INLINE PixelVec low_bytes(const PixelVec (&v)[4]) {
    const PixelTag d;
    const auto low = hn::Set(d, 0xFF);
    const auto mixed = hn::Or(hn::Or(hn::And(v[0], low), hn::ShiftLeft<8>(hn::And(v[1], low))),
                              hn::Or(hn::ShiftLeft<16>(hn::And(v[2], low)), hn::ShiftLeft<24>(v[3])));
    return joined(bytes_turned(mixed));
}

// How far results in floats can be relied on. Each of them is a sum of products of whole numbers and weights
// that add up to 1.
struct FloatLimits {
    // Beyond, errors would add up and most pixels be done twice.
    static constexpr std::int32_t kMostTaps = 16;
    // Added to a result, brings whole numbers to the end of a float, rounded.
    static constexpr float kShift = 8388608.0F;

    FloatLimits() = default;
    // `taps`: how many products are added up at most; `steps`: all sums are multiples of 1 / steps.
    FloatLimits(std::int32_t taps, double steps) {
        // Each weight, product and addition is off by 2^-24 of at most 256, and so is what tests the result.
        const double error = (taps + 8) / 65536.0;
        sure = static_cast<float>(0.5 - error);
        // Middles belong to the upper result. A quarter of the least distance from them takes results away
        // from there, so that all are sure where that distance is more than the errors; it is where weights
        // are simple, and middles frequent.
        bias = static_cast<float>(std::min(2 * error, 0.25 / steps));
    }

    float sure = 0;  // the distance from a whole number up to which a result may be rounded to it
    float bias = 0;  // to be added to each sum
};

// The weights of the pixels of a row as floats, divided by the total of all weights: for each pixel as many
// whole blocks as the one with the most neighbours needs.
class FloatWeights {
public:
    // `steps`: all sums divided by `total` are multiples of 1 / steps.
    FloatWeights(const ScaleAxis& axis, double total, double steps) {
        std::int32_t most = 0;
        for (std::int32_t x = 0; x < axis.count(); ++x) most = std::max(most, axis.taps(x).count);
        if (most > FloatLimits::kMostTaps) return;
        stride_ = (most + kGroup - 1) / kGroup * kGroup;
        const std::size_t count = static_cast<std::size_t>(axis.count()) * static_cast<std::size_t>(stride_);
        starts_ = thread_scratch<std::int32_t>(Scratch::ScaledStarts, static_cast<std::size_t>(axis.count()));
        if (starts_ == nullptr) return;
        weights_ = thread_scratch<float>(Scratch::ScaledWeights, count + kColumns);
        if (weights_ == nullptr) return;
        std::fill_n(weights_, count + kColumns, 0.0f);
        for (std::int32_t x = 0; x < axis.count(); ++x) {
            const Taps& taps = axis.taps(x);
            starts_[x] = 4 * (taps.first - axis.begin());
            float* to = weights_ + std::ptrdiff_t{stride_} * x;
            for (std::int32_t i = 0; i < taps.count; ++i)
                to[i] = static_cast<float>(axis.weight(taps, i) / total);
        }
        limits_ = FloatLimits(stride_, steps);
    }
    bool is_valid() const { return weights_ != nullptr; }
    std::int32_t stride() const { return stride_; }
    // stride() of them for each pixel.
    const float* weights() const { return weights_; }
    const FloatLimits& limits() const { return limits_; }
    // Where the sums that make pixel x begin.
    std::int32_t start(std::int32_t x) const { return starts_[x]; }

private:
    std::int32_t* starts_ = nullptr;
    float* weights_ = nullptr;
    std::int32_t stride_ = 0;
    FloatLimits limits_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
