// Square tiles of one colour.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/mosaic.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cstring>

#include "core/compose.h"
#include "core/kernel_path.h"
#include "core/pixel_rows.h"
#include "core/pixel_runs-inl.h"
#include "core/streaming.h"
#include "filters/effects/effects_plain.h"

#if HWY_ONCE
namespace pixvane::filters {
namespace {

// The mean of the tile around (x, y), which lies inside the picture; its top left corner does, too.
Pixel mean_of_tile(ConstPixelBuffer source, std::int32_t half, std::int32_t x, std::int32_t y) {
    // How often the window meets this place: the last of a row or column stands for those beyond it.
    const auto times = [=](std::int32_t place, std::int32_t middle, std::int32_t size) -> std::uint64_t {
        return place < size - 1 ? 1 : static_cast<std::uint64_t>(std::int64_t{middle} + half - size + 2);
    };
    std::uint64_t red = red_of(source.row(y)[x]);
    std::uint64_t green = green_of(source.row(y)[x]);
    std::uint64_t blue = blue_of(source.row(y)[x]);
    for (std::int32_t v = y - half; v < std::min<std::int64_t>(std::int64_t{y} + half + 1, source.height);
         ++v) {
        const Pixel* row = source.row(v);
        const std::uint64_t rowTimes = times(v, y, source.height);
        for (std::int32_t u = x - half; u < std::min<std::int64_t>(std::int64_t{x} + half + 1, source.width);
             ++u) {
            const std::uint64_t weight = rowTimes * times(u, x, source.width);
            red += weight * red_of(row[u]);
            green += weight * green_of(row[u]);
            blue += weight * blue_of(row[u]);
        }
    }
    const auto side = static_cast<std::uint64_t>(half) * 2 + 1;
    const std::uint64_t weights = side * side + 1;
    return make_pixel(0xFF, static_cast<std::uint32_t>(red / weights),
                      static_cast<std::uint32_t>(green / weights),
                      static_cast<std::uint32_t>(blue / weights));
}

}  // namespace

void plain::mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
                   std::int32_t first, std::int32_t last) {
    const std::int64_t side = std::int64_t{half} * 2 + 1;
    for (std::int64_t y0 = first - first % side; y0 < last; y0 += side) {
        for (std::int64_t x0 = 0; x0 < source.width; x0 += side) {
            const bool drawn = x0 + half < source.width && y0 + half < source.height;
            Pixel tile = 0;  // which leaves what is below it
            if (drawn) {
                const auto x = static_cast<std::int32_t>(x0 + half);
                const auto y = static_cast<std::int32_t>(y0 + half);
                tile = color == TileColor::Centre ? source.row(y)[x] : mean_of_tile(source, half, x, y);
            }
            const auto top = static_cast<std::int32_t>(std::max<std::int64_t>(y0, first));
            const auto bottom = static_cast<std::int32_t>(std::min<std::int64_t>(y0 + side, last));
            const auto right = static_cast<std::int32_t>(std::min<std::int64_t>(x0 + side, source.width));
            for (std::int32_t y = top; y < bottom; ++y) {
                for (auto x = static_cast<std::int32_t>(x0); x < right; ++x)
                    target.row(y)[x] = source_over(source.row(y)[x], tile);
            }
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// Columns are worked on so many at a time; what isn't a whole tile larger than that is left to the plain
// version.
constexpr std::int32_t kColumns = 4096;
// Sums of so many bytes fit 16 bits.
constexpr std::int32_t kMostRows = 257;

using SumTag = hn::Repartition<std::uint16_t, PixelTag>;

// Sums of `side` rows of four bytes each, of kVectors vectors of columns.
template <int kVectors>
HWY_INLINE void sum_vectors(ConstPixelBuffer source, std::int32_t x, std::int32_t y, std::int32_t side,
                            std::uint16_t (*sums)[4]) {
    const PixelTag d;
    const SumTag wide;
    const hn::Repartition<std::uint8_t, PixelTag> bytes;
    const auto zero = hn::Zero(bytes);
    const std::size_t lanes = hn::Lanes(d);
    hn::Vec<SumTag> low[kVectors];
    hn::Vec<SumTag> high[kVectors];
    for (int i = 0; i < kVectors; ++i) low[i] = high[i] = hn::Zero(wide);
    for (std::int32_t v = y; v < y + side; ++v) {
        const Pixel* row = source.row(std::min(v, source.height - 1)) + x;
        for (std::size_t i = 0; i < kVectors; ++i) {
            const auto pixels = hn::BitCast(bytes, hn::LoadU(d, row + i * lanes));
            low[i] = hn::Add(low[i], hn::BitCast(wide, hn::InterleaveLower(bytes, pixels, zero)));
            high[i] = hn::Add(high[i], hn::BitCast(wide, hn::InterleaveUpper(bytes, pixels, zero)));
        }
    }
    for (std::size_t i = 0; i < kVectors; ++i) {
        HWY_ALIGN std::uint16_t parts[2][hn::MaxLanes(SumTag())];
        hn::Store(low[i], wide, parts[0]);
        hn::Store(high[i], wide, parts[1]);
        // Of each block of four pixels two are in the lower part, two in the upper one.
        for (std::size_t pair = 0; pair < lanes / 2; ++pair)
            std::memcpy(sums[i * lanes + 2 * pair], parts[pair % 2] + pair / 2 * 8, 16);
    }
}

void sum_columns(ConstPixelBuffer source, std::int32_t x, std::int32_t count, std::int32_t y,
                 std::int32_t side, std::uint16_t (*sums)[4]) {
    constexpr int kMany = 6;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(PixelTag()));
    std::int32_t i = 0;
    for (; i + kMany * lanes <= count; i += kMany * lanes)
        sum_vectors<kMany>(source, x + i, y, side, sums + i);
    for (; i + lanes <= count; i += lanes) sum_vectors<1>(source, x + i, y, side, sums + i);
    for (; i < count; ++i) {
        std::fill_n(sums[i], 4, std::uint16_t{0});
        for (std::int32_t v = y; v < y + side; ++v) {
            const Pixel p = source.row(std::min(v, source.height - 1))[x + i];
            sums[i][0] = static_cast<std::uint16_t>(sums[i][0] + blue_of(p));
            sums[i][1] = static_cast<std::uint16_t>(sums[i][1] + green_of(p));
            sums[i][2] = static_cast<std::uint16_t>(sums[i][2] + red_of(p));
        }
    }
}

// The four channels of a pixel, in the order of its bytes.
using ChannelTag = hn::FixedTag<std::uint32_t, 4>;
using ChannelVec = hn::Vec<ChannelTag>;
using ChannelBytes = hn::FixedTag<std::uint8_t, 4>;

HWY_INLINE hn::Vec<ChannelBytes> bytes_of(Pixel p) {
    return hn::LoadU(ChannelBytes(), reinterpret_cast<const std::uint8_t*>(&p));
}

// The sum over columns begin..end; up to `whole`, the last one counts instead of those that aren't there.
HWY_INLINE ChannelVec sum_of(const std::uint16_t (*sums)[4], std::int32_t begin, std::int32_t end,
                             std::int32_t whole) {
    const ChannelTag d;
    const hn::FixedTag<std::uint16_t, 8> two;
    const hn::FixedTag<std::uint16_t, 4> one;
    // Of two columns at a time: blue and red, green and alpha.
    ChannelVec even = hn::Zero(d);
    ChannelVec odd = hn::Zero(d);
    const auto add = [&](auto columns) HWY_ATTR {
        const ChannelVec pairs = hn::BitCast(d, columns);
        even = hn::Add(even, hn::And(pairs, hn::Set(d, 0xFFFF)));
        odd = hn::Add(odd, hn::ShiftRight<16>(pairs));
    };
    std::int32_t i = begin;
    for (; i + 2 <= end; i += 2) add(hn::LoadU(two, sums[i]));
    if (i < end) add(hn::ZeroExtendVector(two, hn::LoadU(one, sums[i])));
    const ChannelVec sum = hn::Add(hn::InterleaveLower(d, even, odd), hn::InterleaveUpper(d, even, odd));
    if (HWY_LIKELY(end == whole)) return sum;
    const ChannelVec last = hn::PromoteTo(d, hn::LoadU(one, sums[end - 1]));
    return hn::Add(sum, hn::Mul(last, hn::Set(d, static_cast<std::uint32_t>(whole - end))));
}

HWY_INLINE Pixel mean_of(ChannelVec total, double part) {
    const hn::FixedTag<std::int32_t, 4> integers;
    const hn::FixedTag<double, 4> doubles;
    // Half of one more keeps a whole quotient from falling below itself.
    const auto sum = hn::Add(hn::PromoteTo(doubles, hn::BitCast(integers, total)), hn::Set(doubles, 0.5));
    const auto mean = hn::DemoteTo(integers, hn::Mul(sum, hn::Set(doubles, part)));
    Pixel made;
    hn::StoreU(hn::DemoteTo(ChannelBytes(), mean), ChannelBytes(), reinterpret_cast<std::uint8_t*>(&made));
    return made | kOpaque;
}

// The means of tiles that start at column x, of which the last may reach beyond `count` columns.
void mean_tiles(ConstPixelBuffer source, std::int32_t half, std::int32_t x, std::int32_t count,
                std::int32_t y, std::int32_t tiles, Pixel* colors) {
    const std::int32_t side = 2 * half + 1;
    std::uint16_t sums[kColumns][4];
    sum_columns(source, x, count, y, side, sums);
    const auto weights = static_cast<std::uint32_t>(side) * static_cast<std::uint32_t>(side) + 1;
    const double part = 1.0 / weights;
    for (std::int32_t tile = 0; tile < tiles; ++tile) {
        const std::int32_t begin = tile * side;
        const std::int32_t end = std::min(begin + side, count);
        const auto total =
            hn::Add(sum_of(sums, begin, end, begin + side),
                    hn::PromoteTo(ChannelTag(), bytes_of(source.row(y + half)[x + begin + half])));
        colors[tile] = mean_of(total, part);
    }
}

// Copies pixels and brings others near meanwhile.
HWY_INLINE void copy_and_fetch(const Pixel* from, Pixel* to, std::size_t count, const Pixel* ahead,
                               bool streaming) {
    constexpr std::size_t kPart = 16 * kLinePixels;
    // Parts end where lines do.
    std::size_t part = kPart + pixels_to_line(to);
    for (std::size_t i = 0; i < count; i += part, part = kPart) {
        part = std::min(part, count - i);
        for (std::size_t k = i; k < i + part; k += kLinePixels) fetch_line(ahead + k);
        copy_run(from + i, to + i, part, streaming);
    }
}

// One row of tiles of `count` columns from x on, drawn into rows top..bottom. `fetches`: all pixels of the
// next tiles will be wanted.
void draw_tiles(ConstPixelBuffer source, PixelBuffer target, std::int32_t side, std::int32_t x,
                std::int32_t count, std::int32_t tiles, const Pixel* colors, std::int32_t top,
                std::int32_t bottom, bool streaming, bool fetches) {
    Pixel line[kColumns];
    Pixel alpha = kOpaque;
    for (std::int32_t tile = 0; tile < tiles; ++tile) {
        const std::int32_t end = std::min(count, (tile + 1) * side);
        for (std::int32_t i = tile * side; i < end; ++i) line[i] = colors[tile];
        alpha &= colors[tile];
    }
    const auto drawn = static_cast<std::size_t>(std::min(count, tiles * side));
    const auto whole = static_cast<std::size_t>(count);
    for (std::int32_t y = top; y < bottom; ++y) {
        Pixel* to = target.row(y) + x;
        const Pixel* from = source.row(y) + x;
        if (alpha == kOpaque && fetches) {
            const Pixel* ahead = source.row(std::min(y + side, source.height - 1)) + x;
            copy_and_fetch(line, to, drawn, ahead, streaming);
        } else if (alpha == kOpaque) {
            copy_run(line, to, drawn, streaming);
        } else {
            copy_run(from, to, drawn, false);
            blend_row(to, line, drawn);
        }
        if (drawn < whole) copy_run(from + drawn, to + drawn, whole - drawn, streaming);
    }
}

void mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
            std::int32_t first, std::int32_t last) {
    if (half > kMostRows / 2) return plain::mosaic(source, target, color, half, first, last);
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    const std::int32_t side = 2 * half + 1;
    const std::int32_t columns = kColumns / side * side;
    for (std::int32_t y = first - first % side; y < last; y += side) {
        const std::int32_t top = std::max(y, first);
        const std::int32_t bottom = std::min(y + side, last);
        for (std::int32_t x = 0; x < source.width; x += columns) {
            const std::int32_t count = std::min(columns, source.width - x);
            // Those whose middles are inside.
            const std::int32_t tiles = y + half < source.height ? (count + half) / side : 0;
            Pixel colors[kColumns / 3 + 1];
            if (color == TileColor::Mean && tiles > 0) {
                mean_tiles(source, half, x, count, y, tiles, colors);
            } else {
                for (std::int32_t tile = 0; tile < tiles; ++tile)
                    colors[tile] = source.row(y + half)[x + tile * side + half];
            }
            draw_tiles(source, target, side, x, count, tiles, colors, top, bottom, streaming,
                       color == TileColor::Mean);
        }
    }
    if (streaming) hwy::FlushStream();
}
#else
using plain::mosaic;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(mosaic);

void mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
            std::int32_t first, std::int32_t last) {
    pick_kernel(plain::mosaic, HWY_DYNAMIC_DISPATCH(mosaic))(source, target, color, half, first, last);
}

}  // namespace pixvane::filters
#endif
