// Quarter turns and flips.
// SPDX-License-Identifier: MIT
#include "filters/geometry/geometry.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/geometry/rotate_flip.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cstring>

#include "core/kernel_path.h"
#include "filters/geometry/orientation.h"
#include "filters/geometry/square-inl.h"
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

HWY_INLINE Pixel* row_of_square(PixelBuffer target, const Orientation& turn, std::int32_t x, std::int32_t y,
                                std::int32_t i) {
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    return target.row(y + (turn.fromRight ? kSide - 1 - i : i)) + x;
}

HWY_INLINE void turn_squares(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn,
                             const Area& area) {
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    PixelVec rows[kSquare];
    for (std::int32_t x = area.left; x < area.right; x += kSide) {
        for (std::int32_t y = area.top; y < area.bottom; y += kSide) {
            turn_square(source, turn, x, y, rows);
            for (std::int32_t i = 0; i < kSide; ++i)
                hn::StoreU(rows[i], PixelTag(), row_of_square(target, turn, x, y, i));
        }
    }
}

// The same past the caches, where rows start on lines and the columns are whole lines. A line that is
// streamed in pieces, with others in between, would reach memory in pieces.
void stream_lines(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn, const Area& area) {
    const PixelTag d;
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    HWY_ALIGN Pixel lines[kSquare][kLinePixels];
    PixelVec rows[kSquare];
    // Along the rows of the source, which come in order then.
    for (std::int32_t x = 0; x < area.right; x += static_cast<std::int32_t>(kLinePixels)) {
        for (std::int32_t y = area.top; y < area.bottom; y += kSide) {
            for (std::size_t part = 0; part < kLinePixels; part += kSquare) {
                turn_square(source, turn, x + static_cast<std::int32_t>(part), y, rows);
                for (std::size_t i = 0; i < kSquare; ++i) hn::Store(rows[i], d, lines[i] + part);
            }
            for (std::int32_t i = 0; i < kSide; ++i) {
                Pixel* to = row_of_square(target, turn, x, y, i);
                for (std::size_t part = 0; part < kLinePixels; part += kSquare)
                    hn::Stream(hn::Load(d, lines[i] + part), d, to + part);
            }
        }
    }
}

// How many rows of the target are streamed side by side.
constexpr std::int32_t kBandRows = 512;

// The same past the caches, for columns from 0 on, whole lines of them, and at most kBandRows rows. Lines
// that are streamed in pieces, with others in between, reach memory in pieces; and rows start anywhere in a
// line. So each row keeps what it has of a line until the next columns come.
void stream_shifted(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn, const Area& area) {
    const PixelTag d;
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    constexpr auto kColumns = static_cast<std::int32_t>(kLinePixels);
    // The columns before x, and those from x on.
    HWY_ALIGN Pixel kept[kBandRows][2 * kLinePixels];
    PixelVec rows[kSquare];
    // Along the rows of the source, which come in order then.
    for (std::int32_t x = 0; x < area.right; x += kColumns) {
        for (std::int32_t y = area.top; y < area.bottom; y += kSide) {
            Pixel(*own)[2 * kLinePixels] = kept + (y - area.top);
            for (std::size_t part = 0; part < kLinePixels; part += kSquare) {
                turn_square(source, turn, x + static_cast<std::int32_t>(part), y, rows);
                for (std::size_t i = 0; i < kSquare; ++i) hn::Store(rows[i], d, own[i] + kLinePixels + part);
            }
            for (std::int32_t i = 0; i < kSide; ++i) {
                Pixel* to = row_of_square(target, turn, x, y, i);
                const std::size_t first = pixels_to_line(to);
                if (x == 0) std::memcpy(to, own[i] + kLinePixels, first * sizeof(Pixel));
                for (std::size_t part = 0; x > 0 && part < kLinePixels; part += kSquare)
                    hn::Stream(hn::LoadU(d, own[i] + first + part), d, to - kLinePixels + first + part);
                for (std::size_t part = 0; part < kLinePixels; part += kSquare)
                    hn::Store(hn::Load(d, own[i] + kLinePixels + part), d, own[i] + part);
            }
        }
    }
    for (std::int32_t y = area.top; y < area.bottom; y += kSide) {
        for (std::int32_t i = 0; i < kSide; ++i) {
            Pixel* to = row_of_square(target, turn, area.right, y, i);
            const std::size_t first = pixels_to_line(to);
            std::memcpy(to - kLinePixels + first, kept[y - area.top + i] + first,
                        (kLinePixels - first) * sizeof(Pixel));
        }
    }
}

void turn_rows(ConstPixelBuffer source, PixelBuffer target, const Orientation& turn, std::int32_t first,
               std::int32_t last) {
    constexpr auto kSide = static_cast<std::int32_t>(kSquare);
    constexpr auto kColumns = static_cast<std::int32_t>(kLinePixels);
    const std::int32_t bottom = last - (last - first) % kSide;
    const std::int32_t right = target.width - target.width % kSide;
    std::int32_t streamed = 0;
    if (target.rows(first, last).bytes() >= kStreamingBytes && target.width >= kColumns) {
        streamed = target.width - target.width % kColumns;
        if (pixels_to_line(target.data) == 0 && target.width % kColumns == 0) {
            stream_lines(source, target, turn, {0, first, streamed, bottom});
        } else {
            for (std::int32_t y = first; y < bottom; y += kBandRows)
                stream_shifted(source, target, turn, {0, y, streamed, std::min(y + kBandRows, bottom)});
        }
        hwy::FlushStream();
    }
    turn_squares(source, target, turn, {streamed, first, right, bottom});
    turn_area(source, target, turn, {right, first, target.width, bottom});
    turn_area(source, target, turn, {0, bottom, target.width, last});
}

void rotate_flip_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t type, std::int32_t first,
                      std::int32_t last) {
    const Orientation turn = orientation_of(type);
    if (turn.exchangesSides) {
        turn_rows(source, target, turn, first, last);
    } else {
        flip_rows(source, target, turn, first, last);
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
