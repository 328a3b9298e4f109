// Sums of bytes and their weights, added up over rows of the source; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_CLOSE_COLUMNS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_CLOSE_COLUMNS_INL_H_
#undef PIXVANE_CORE_SCALE_CLOSE_COLUMNS_INL_H_
#else
#define PIXVANE_CORE_SCALE_CLOSE_COLUMNS_INL_H_
#endif

#include <algorithm>
#include <cstdint>
#include <limits>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_floats-inl.h"

#if HWY_TARGET == HWY_AVX3_DL
// All processors of this target multiply bytes, though it doesn't name these instructions.
HWY_PUSH_ATTRIBUTES(HWY_TARGET_STR ",avx512vnni")
namespace pixvane::HWY_NAMESPACE {

// All of these make sums whose bits 16 to 23 are the results.
constexpr std::int32_t kResultUnit = 1 << 16;

// Whether the lanes of alphas, the last of each block, have this value.
HWY_INLINE bool alphas_are(__m512i lanes, std::int32_t value) {
    return _mm512_mask_cmpneq_epi32_mask(0x8888, lanes, _mm512_set1_epi32(value)) == 0;
}

// For weights that make 256 along both axes: exact, in 16 bits along a row and in 24 bits in all.
class CloseInBytes {
public:
    static constexpr std::int32_t kMostParts = 1;
    static constexpr std::int32_t kMostRows = 64;

    explicit CloseInBytes(const Scaling& scaling) : axis_(scaling.y()) {
        std::int32_t most = 0;
        for (std::int32_t y = 0; y < axis_.count(); ++y) most = std::max(most, axis_.taps(y).count);
        // With their common divisor the weights along rows must be what they are here.
        isValid_ = scaling.x().total_weight() == kTotal && scaling.x().steps() == kTotal &&
                   axis_.total_weight() == kTotal && most <= kMostRows;
    }
    bool is_valid() const { return isValid_; }

    // One row of the target.
    class Row {
    public:
        Row(const ScaleAxis& axis, std::int32_t y) {
            const Taps& taps = axis.taps(y);
            for (std::int32_t i = 0; i < taps.count; ++i) weights_[i] = axis.weight(taps, i);
        }
        template <class Neighbours>
        HWY_INLINE IntVec sum_of(const Neighbours& neighbours, std::int32_t rows) {
            // Sums along rows are less this, so that they fit the lower halves with their signs; the upper
            // halves are nothing but signs, and their weights 0.
            const __m512i bias = _mm512_set1_epi32(std::numeric_limits<std::int16_t>::min());
            __m512i sum = _mm512_set1_epi32(kStart);
            for (std::int32_t i = 0; i < rows; ++i)
                sum = _mm512_dpwssd_epi32(sum, neighbours.sums(i, bias), _mm512_set1_epi32(weights_[i]));
            lowest_ = _mm512_min_epi32(lowest_, sum);
            return IntVec{sum};
        }
        bool is_opaque() const { return alphas_are(lowest_, 255 * kResultUnit + kResultUnit / 2); }
        static bool is_sure() { return true; }
        static std::uint32_t unsure_lanes() { return 0; }

    private:
        // Takes the bias away again, and rounds.
        static constexpr std::int32_t kStart =
            -std::numeric_limits<std::int16_t>::min() * ScaleAxis::kBilinearTotal + kResultUnit / 2;
        std::int32_t weights_[kMostRows];
        __m512i lowest_ = _mm512_set1_epi32(std::numeric_limits<std::int32_t>::max());
    };
    Row begin(std::int32_t y) const { return {axis_, y}; }

private:
    static constexpr std::int32_t kTotal = ScaleAxis::kBilinearTotal;
    const ScaleAxis& axis_;
    bool isValid_ = false;
};

// For all weights: sums along rows are exact, and added up in floats. What comes so close to the middle of
// two results that floats can't tell is not sure.
class CloseInFloats {
public:
    static constexpr std::int32_t kMostParts = 2;

    explicit CloseInFloats(const Scaling& scaling)
        : axis_(scaling.y()), steps_(scaling.x().steps()), total_(double{1} * steps_ * axis_.total_weight()) {
        std::int32_t most = 0;
        for (std::int32_t y = 0; y < axis_.count(); ++y) most = std::max(most, axis_.taps(y).count);
        if (most > FloatLimits::kMostTaps) return;
        // In units of a result the weights put a sum off by 1 at most, and so do two additions.
        start_ = (0.5F + FloatLimits(most, double{1} * steps_ * axis_.steps()).bias) * kResultUnit;
        error_ = most / 2 + 4;
    }
    bool is_valid() const { return error_ > 0; }

    // One row of the target.
    class Row {
    public:
        Row(const CloseInFloats& columns, std::int32_t y) : columns_(columns) {
            const Taps& taps = columns.axis_.taps(y);
            for (std::int32_t i = 0; i < taps.count; ++i)
                weights_[i] =
                    static_cast<float>(kResultUnit * columns.axis_.weight(taps, i) / columns.total_);
        }
        template <class Neighbours>
        HWY_INLINE IntVec sum_of(const Neighbours& neighbours, std::int32_t rows) {
            __m512 sum = _mm512_set1_ps(columns_.start_);
            for (std::int32_t i = 0; i < rows; ++i) {
                const __m512i part = neighbours.sums(i, _mm512_setzero_si512());
                lowest_ = _mm512_min_epi32(lowest_, part);
                sum = _mm512_fmadd_ps(_mm512_cvtepi32_ps(part), _mm512_set1_ps(weights_[i]), sum);
            }
            const __m512i values = _mm512_cvttps_epi32(sum);
            const __m512i beyond = _mm512_add_epi32(values, _mm512_set1_epi32(columns_.error_));
            nearest_ =
                _mm512_min_epi32(nearest_, _mm512_and_si512(beyond, _mm512_set1_epi32(kResultUnit - 1)));
            return IntVec{values};
        }
        bool is_opaque() const { return alphas_are(lowest_, 255 * columns_.steps_); }
        bool is_sure() const { return unsure() == 0; }
        // Asked once, each lane of the vector being that of four sums.
        std::uint32_t unsure_lanes() {
            const std::uint32_t lanes = unsure();
            nearest_ = _mm512_set1_epi32(kResultUnit - 1);
            return lanes;
        }

    private:
        std::uint32_t unsure() const {
            return _mm512_cmplt_epi32_mask(nearest_, _mm512_set1_epi32(2 * columns_.error_));
        }
        const CloseInFloats& columns_;
        float weights_[FloatLimits::kMostTaps];
        __m512i lowest_ = _mm512_set1_epi32(std::numeric_limits<std::int32_t>::max());
        __m512i nearest_ = _mm512_set1_epi32(kResultUnit - 1);
    };
    Row begin(std::int32_t y) const { return {*this, y}; }

private:
    const ScaleAxis& axis_;
    std::int32_t steps_;
    double total_;
    float start_ = 0;         // of a sum, so that it is rounded by truncation
    std::int32_t error_ = 0;  // how near to a whole number a sum may be on its wrong side
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_POP_ATTRIBUTES
#endif  // HWY_TARGET == HWY_AVX3_DL

#endif  // include guard for each instruction set
