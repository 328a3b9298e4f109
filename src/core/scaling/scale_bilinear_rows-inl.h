// Bilinear scaling, row by row; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_BILINEAR_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_BILINEAR_ROWS_INL_H_
#undef PIXVANE_CORE_SCALE_BILINEAR_ROWS_INL_H_
#else
#define PIXVANE_CORE_SCALE_BILINEAR_ROWS_INL_H_
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_bilinear-inl.h"
#include "core/scaling/scale_result-inl.h"
#include "core/scratch.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// The sums of the two source rows that are mixed at the moment; a row lies in the slot of its parity.
template <bool kShort>
class SumRows {
public:
    SumRows(ConstPixelBuffer source, const ScaleAxis& axis, WeightBits bits)
        : source_(source), axis_(axis), bits_(bits), width_((axis.count() + kLanes - 1) / kLanes * kLanes) {
        const std::size_t size = static_cast<std::size_t>(width_) * 4;
        memory_ = thread_scratch<std::int16_t>(Scratch::ScaledRows, 2 * size + 2 * size / 4);
    }
    bool is_valid() const { return memory_ != nullptr; }
    std::int32_t width() const { return width_; }

    // Begins a row, and tells whether its sums are still to be made.
    bool enter(std::int32_t y) {
        const std::size_t slot = slot_of(y);
        if (held_[slot] == y) return false;
        held_[slot] = y;
        isOpaque_[slot] = true;
        return true;
    }
    void widen(std::int32_t y, std::int32_t first, std::int32_t last) {
        const auto run = axis_.shrinks() ? widen_row<true, kShort> : widen_row<false, kShort>;
        if (!run(source_.row(y), source_.width, axis_, bits_, first, last, sums_of(y)))
            isOpaque_[slot_of(y)] = false;
    }
    bool is_opaque(std::int32_t y) const { return isOpaque_[slot_of(y)]; }
    std::int16_t* sums_of(std::int32_t y) {
        return memory_ + slot_of(y) * static_cast<std::size_t>(width_) * 4;
    }
    // Room for a row of the target in whole vectors.
    Pixel* line() { return reinterpret_cast<Pixel*>(memory_ + static_cast<std::size_t>(width_) * 8); }

private:
    static std::size_t slot_of(std::int32_t y) { return static_cast<std::size_t>(y) % 2; }

    ConstPixelBuffer source_;
    const ScaleAxis& axis_;
    WeightBits bits_;
    std::int32_t width_;
    std::int32_t held_[2] = {-1, -1};
    bool isOpaque_[2] = {};
    std::int16_t* memory_ = nullptr;
};

template <class Mix>
HWY_NOINLINE void scale_rows_bilinear(ConstPixelBuffer source, PixelArea target, const Scaling& scaling,
                                      WeightBits bits, ResultRows& result, std::int32_t first,
                                      std::int32_t last) {
    SumRows<std::is_same_v<Mix, MixShort>> rows(source, scaling.x(), bits);
    if (!rows.is_valid()) {
        result.make_plain(first, last);
        return;
    }
    const bool streaming = is_large(target, first, last);
    const bool isWhole = rows.width() == target.width;
    constexpr std::int32_t kPixels = 256;  // a multiple of every vector
    const bool direct = !result.needs_line() && (streaming ? can_stream(target) : isWhole);
    for (std::int32_t y = first; y < last; ++y) {
        const Taps& taps = scaling.y().taps(y);
        const std::int32_t upper = taps.first;
        const std::int32_t lower = taps.first + taps.count - 1;
        Pixel* to = direct ? target.row(y) : rows.line();
        const Mix mix(taps, bits);
        const bool newUpper = rows.enter(upper);
        const bool newLower = rows.enter(lower);
        // Part by part, so that pixels go out to memory while the next sums are made.
        for (std::int32_t x = 0; x < rows.width(); x += kPixels) {
            const std::int32_t end = std::min(x + kPixels, rows.width());
            if (newUpper) rows.widen(upper, x, end);
            if (newLower) rows.widen(lower, x, end);
            if (!rows.is_opaque(upper) || !rows.is_opaque(lower)) continue;
            if (streaming && direct) {
                mix_sums<true>(rows.sums_of(upper), rows.sums_of(lower), mix, to, x, end);
            } else {
                mix_sums<false>(rows.sums_of(upper), rows.sums_of(lower), mix, to, x, end);
            }
        }
        if (rows.is_opaque(upper) && rows.is_opaque(lower)) {
            result.finish_opaque(y, to, streaming);
        } else {
            result.make_other(y);
        }
    }
    hwy::FlushStream();
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
