// Quarter turns and flips.
// SPDX-License-Identifier: MIT
#include "filters/geometry.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/rotate_flip.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"
#include "filters/orientation.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::rotate_flip_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t type,
                             std::int32_t first, std::int32_t last) {
    turn_area(source, target, orientation_of(type), {0, first, target.width, last});
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// A row from its end to its start. The source is read forwards, in the order of its memory.
HWY_INLINE void reverse_row(const Pixel* from, Pixel* to, std::size_t count, bool streaming) {
    const PixelTag d;
    const std::size_t lanes = hn::Lanes(d);
    const std::size_t bytes = lanes * sizeof(Pixel);
    Pixel* end = to + count;
    std::size_t i = 0;
    if (streaming) {
        const std::size_t beyond = reinterpret_cast<std::uintptr_t>(end) % bytes / sizeof(Pixel);
        for (; i < std::min(beyond, count); ++i) *--end = from[i];
        for (; i + lanes <= count; i += lanes) {
            end -= lanes;
            hn::Stream(hn::Reverse(d, hn::LoadU(d, from + i)), d, end);
        }
    } else {
        for (; i + lanes <= count; i += lanes) {
            end -= lanes;
            hn::StoreU(hn::Reverse(d, hn::LoadU(d, from + i)), d, end);
        }
    }
    for (; i < count; ++i) *--end = from[i];
}

void flip_rows(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn, std::int32_t first,
               std::int32_t last) {
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    const auto width = static_cast<std::size_t>(source.width);
    for (std::int32_t i = first; i < last; ++i) {
        // In the order of the source here, too.
        const std::int32_t y = turn.fromBottom ? last - 1 - (i - first) : i;
        const Pixel* from = source.row(turn.fromBottom ? source.height - 1 - y : y);
        if (turn.fromRight) {
            reverse_row(from, target.row(y), width, streaming);
        } else {
            copy_run(from, target.row(y), width, streaming);
        }
    }
    hwy::FlushStream();
}

// Rows and columns exchanged in a square of as many vectors as a vector has lanes: first among groups of
// four lanes, then among the groups.
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

// The square of the target at (x, y), row by row, from a square of the source.
HWY_INLINE void turn_square(ConstPixelBuffer source, const Orientation& turn, std::int32_t x, std::int32_t y,
                            PixelVec (&rows)[kSquare]) {
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    const std::int32_t column = turn.fromRight ? source.width - kSide - y : y;
    for (std::int32_t i = 0; i < kSide; ++i) {
        const Pixel* row = source.row(turn.fromBottom ? source.height - 1 - x - i : x + i);
        rows[i] = hn::LoadU(PixelTag(), row + column);
    }
    exchange_square(rows);
}

// As many squares side by side as it takes to write whole lines of the cache.
constexpr std::size_t kLine = kLinePixels;

template <bool kStreaming>
HWY_INLINE void turn_block(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn,
                           std::int32_t x, std::int32_t y) {
    const PixelTag d;
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    const auto row_of = [&](std::size_t i) HWY_ATTR {
        const auto offset = static_cast<std::int32_t>(i);
        return target.row(y + (turn.fromRight ? kSide - 1 - offset : offset)) + x;
    };
    PixelVec rows[kSquare];
    if constexpr (!kStreaming || kSquare == kLine) {
        for (std::int32_t part = 0; part < static_cast<std::int32_t>(kLine); part += kSide) {
            turn_square(source, turn, x + part, y, rows);
            for (std::size_t i = 0; i < kSquare; ++i) {
                if constexpr (kStreaming) {
                    hn::Stream(rows[i], d, row_of(i));
                } else {
                    hn::StoreU(rows[i], d, row_of(i) + part);
                }
            }
        }
    } else {
        // A line that is streamed in pieces, with other lines in between, would reach memory in pieces.
        HWY_ALIGN Pixel lines[kSquare * kLine];
        for (std::size_t part = 0; part < kLine; part += kSquare) {
            turn_square(source, turn, x + static_cast<std::int32_t>(part), y, rows);
            for (std::size_t i = 0; i < kSquare; ++i) hn::Store(rows[i], d, lines + i * kLine + part);
        }
        for (std::size_t i = 0; i < kSquare; ++i) {
            for (std::size_t part = 0; part < kLine; part += kSquare)
                hn::Stream(hn::Load(d, lines + i * kLine + part), d, row_of(i) + part);
        }
    }
}

template <bool kStreaming>
HWY_INLINE void turn_rows(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn,
                          std::int32_t first, std::int32_t last) {
    constexpr auto kHigh = static_cast<std::int32_t>(kSquare);
    constexpr auto kWide = static_cast<std::int32_t>(kLine);
    const std::int32_t right = target.width - target.width % kWide;
    const std::int32_t bottom = last - (last - first) % kHigh;
    // Along the rows of the source, which come in order then.
    for (std::int32_t x = 0; x < right; x += kWide) {
        for (std::int32_t y = first; y < bottom; y += kHigh)
            turn_block<kStreaming>(source, target, turn, x, y);
    }
    hwy::FlushStream();
    turn_area(source, target, turn, {right, first, target.width, bottom});
    turn_area(source, target, turn, {0, bottom, target.width, last});
}

void rotate_flip_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t type, std::int32_t first,
                      std::int32_t last) {
    const Orientation turn = orientation_of(type);
    if (!turn.exchangesSides) {
        flip_rows(source, target, turn, first, last);
        return;
    }
    const bool aligned = reinterpret_cast<std::uintptr_t>(target.data) % (kLine * sizeof(Pixel)) == 0 &&
                         static_cast<std::size_t>(target.width) % kLine == 0;
    if (aligned && target.rows(first, last).bytes() >= kStreamingBytes) {
        turn_rows<true>(source, target, turn, first, last);
    } else {
        turn_rows<false>(source, target, turn, first, last);
    }
}
#else
using plain::rotate_flip_rows;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(rotate_flip_rows);

void rotate_flip_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t type, std::int32_t first,
                      std::int32_t last) {
    pick_kernel(plain::rotate_flip_rows, HWY_DYNAMIC_DISPATCH(rotate_flip_rows))(source, target, type, first,
                                                                                 last);
}

void rotate_flip(ConstPixelBuffer source, PixelBuffer target, std::int32_t type) {
    rotate_flip_rows(source, target, type, 0, target.height);
}

}  // namespace pixvane::filters
#endif
