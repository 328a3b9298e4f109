// The least and the largest channel values around each pixel.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/extremes.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"
#include "filters/effects/effects_plain.h"
#include "filters/effects/extreme_strips-inl.h"

#if HWY_ONCE
namespace pixvane::filters {
namespace {

template <class Choose>
Pixel choose_channels(Pixel a, Pixel b, Choose choose) {
    return make_pixel(0xFF, choose(red_of(a), red_of(b)), choose(green_of(a), green_of(b)),
                      choose(blue_of(a), blue_of(b)));
}

// Column by column for a few pixels at once. What repeats beyond the edges changes nothing here.
template <class Choose>
void choose_plainly(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                    std::int32_t last, Choose choose) {
    constexpr std::int32_t kFew = 64;
    for (std::int32_t y = first; y < last; ++y) {
        const std::int32_t top = std::max(0, y - radius);
        const std::int32_t bottom = std::min(source.height - 1, y + radius);
        for (std::int32_t left = 0; left < source.width; left += kFew) {
            const std::int32_t right = std::min(source.width, left + kFew);
            Pixel* to = target.row(y);
            for (std::int32_t x = left; x < right; ++x) to[x] = source.row(y)[x] | kOpaque;
            const std::int32_t end = std::min(source.width, right + radius);
            for (std::int32_t column = std::max(0, left - radius); column < end; ++column) {
                Pixel chosen = source.row(top)[column];
                for (std::int32_t i = top + 1; i <= bottom; ++i)
                    chosen = choose_channels(chosen, source.row(i)[column], choose);
                for (std::int32_t x = std::max(left, column - radius);
                     x < std::min(right, column + radius + 1); ++x)
                    to[x] = choose_channels(to[x], chosen, choose);
            }
        }
    }
}

}  // namespace

void plain::minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                    std::int32_t last) {
    choose_plainly(source, target, radius, first, last,
                   [](std::uint32_t a, std::uint32_t b) { return std::min(a, b); });
}

void plain::maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                    std::int32_t last) {
    choose_plainly(source, target, radius, first, last,
                   [](std::uint32_t a, std::uint32_t b) { return std::max(a, b); });
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// Radius 1: three pixels of three rows, a few rows at once in registers.
template <class Choose>
void choose_nine(ConstPixelBuffer source, PixelBuffer target, std::int32_t first, std::int32_t last,
                 bool streaming) {
    const PixelTag d;
    const Choose choose;
    constexpr std::int32_t kRows = 8;
    const auto lanes = static_cast<std::int32_t>(hn::Lanes(d));
    for (std::int32_t top = first; top < last; top += kRows) {
        const std::int32_t count = std::min(kRows, last - top);
        const auto row_of = [&](std::int32_t y) { return source.row(std::clamp(y, 0, source.height - 1)); };
        const auto choose_scalars = [&](std::int32_t x) HWY_ATTR {
            const std::int32_t left = std::max(0, x - 1);
            const std::int32_t right = std::min(source.width - 1, x + 1);
            for (std::int32_t y = top; y < top + count; ++y) {
                PixelVec all = hn::Set(d, Choose::kNeutral);
                for (std::int32_t v = y - 1; v <= y + 1; ++v) {
                    for (const std::int32_t u : {left, x, right}) all = choose(all, hn::Set(d, row_of(v)[u]));
                }
                target.row(y)[x] = hn::GetLane(opaque(all));
            }
        };
        // The first vector starts at the second pixel, aligned or not; what streams is aligned.
        std::int32_t x = 0;
        for (; x < std::min(streaming ? lanes : 1, source.width); ++x) choose_scalars(x);
        for (; x + lanes < source.width; x += lanes) {
            const auto row_choice = [&](std::int32_t y) HWY_ATTR {
                const Pixel* row = row_of(y) + x;
                return choose(choose(hn::LoadU(d, row - 1), hn::LoadU(d, row)), hn::LoadU(d, row + 1));
            };
            PixelVec above = row_choice(top - 1);
            PixelVec own = row_choice(top);
            for (std::int32_t y = top; y < top + count; ++y) {
                const PixelVec below = row_choice(y + 1);
                const PixelVec chosen = opaque(choose(choose(above, own), below));
                Pixel* to = target.row(y) + x;
                if (streaming) {
                    hn::Stream(chosen, d, to);
                } else {
                    hn::StoreU(chosen, d, to);
                }
                above = own;
                own = below;
            }
        }
        for (; x < source.width; ++x) choose_scalars(x);
    }
    if (streaming) hwy::FlushStream();
}

template <class Choose>
HWY_INLINE bool choose_in_strips(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                                 std::int32_t first, std::int32_t last) {
    constexpr std::size_t kBytes = hn::MaxLanes(PixelTag()) * sizeof(Pixel);
    const bool streaming = reinterpret_cast<std::uintptr_t>(target.data) % kBytes == 0 &&
                           static_cast<std::size_t>(target.width) * sizeof(Pixel) % kBytes == 0 &&
                           target.rows(first, last).bytes() >= kStreamingBytes;
    if (radius == 1) {
        choose_nine<Choose>(source, target, first, last, streaming);
        return true;
    }
    Strip<Choose> strip(source, radius, last - first);
    if (!strip) return false;
    for (std::size_t left = 0; left < static_cast<std::size_t>(source.width); left += strip.width())
        strip.run(target, static_cast<std::int32_t>(left), first, last, streaming);
    if (streaming) hwy::FlushStream();
    return true;
}

void minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last) {
    if (!choose_in_strips<Least>(source, target, radius, first, last))
        plain::minimal(source, target, radius, first, last);
}

void maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last) {
    if (!choose_in_strips<Largest>(source, target, radius, first, last))
        plain::maximal(source, target, radius, first, last);
}
#else
using plain::maximal;
using plain::minimal;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(minimal);
HWY_EXPORT(maximal);

void minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last) {
    pick_kernel(plain::minimal, HWY_DYNAMIC_DISPATCH(minimal))(source, target, radius, first, last);
}

void maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last) {
    pick_kernel(plain::maximal, HWY_DYNAMIC_DISPATCH(maximal))(source, target, radius, first, last);
}

}  // namespace pixvane::filters
#endif
