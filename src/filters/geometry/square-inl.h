// Squares of pixels with rows and columns exchanged, in registers.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_SQUARE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_SQUARE_INL_H_
#undef PIXVANE_FILTERS_SQUARE_INL_H_
#else
#define PIXVANE_FILTERS_SQUARE_INL_H_
#endif

#include "core/pixel_runs-inl.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// As many vectors as a vector has lanes.
constexpr std::size_t kSquare = hn::MaxLanes(PixelTag());

HWY_INLINE void exchange_lanes(PixelVec& a, PixelVec& b, PixelVec& c, PixelVec& d) {
    const PixelQuad turned = lanes_turned({a, b, c, d});
    a = turned.v0;
    b = turned.v1;
    c = turned.v2;
    d = turned.v3;
}

HWY_INLINE void exchange_halves(PixelVec& a, PixelVec& b) {
    const PixelTag t;
    const PixelVec lower = hn::ConcatLowerLower(t, b, a);
    b = hn::ConcatUpperUpper(t, b, a);
    a = lower;
}

HWY_INLINE void exchange_odd_groups(PixelVec& a, PixelVec& b) {
    const PixelVec odd = hn::OddEvenBlocks(b, hn::SwapAdjacentBlocks(a));
    a = hn::OddEvenBlocks(hn::SwapAdjacentBlocks(b), a);
    b = odd;
}

// First among groups of four lanes, then among the groups.
HWY_INLINE void exchange_square(PixelVec (&rows)[kSquare]) {
    for (std::size_t i = 0; i < kSquare; i += 4)
        exchange_lanes(rows[i], rows[i + 1], rows[i + 2], rows[i + 3]);
    if constexpr (kSquare == 8) {
        for (std::size_t i = 0; i < 4; ++i) exchange_halves(rows[i], rows[i + 4]);
    } else if constexpr (kSquare == 16) {
        for (std::size_t i = 0; i < 4; ++i) {
            exchange_odd_groups(rows[i], rows[i + 4]);
            exchange_odd_groups(rows[i + 8], rows[i + 12]);
            exchange_halves(rows[i], rows[i + 8]);
            exchange_halves(rows[i + 4], rows[i + 12]);
        }
    }
}

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
