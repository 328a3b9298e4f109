// Differences to a shifted copy.
// SPDX-License-Identifier: MIT
#include "filters/area/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/area/emboss.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/area/area_plain.h"
#include "filters/area/neighbours-inl.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy,
                   std::int32_t first, std::int32_t last) {
    const auto half = [](std::uint32_t c, std::uint32_t other) { return (c + 255 - other) >> 1; };
    for (std::int32_t y = first; y < last; ++y) {
        const Pixel* others = source.row(inside(std::int64_t{y} + dy, source.height));
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Pixel p = source.row(y)[x];
            const Pixel other = others[inside(std::int64_t{x} + dx, source.width)];
            target.row(y)[x] =
                make_pixel(0xFF, half(red_of(p), red_of(other)), half(green_of(p), green_of(other)),
                           half(blue_of(p), blue_of(other)));
        }
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

struct HalfDifference {
    const Pixel* row;
    const Pixel* others;
    std::int32_t dx;

    // The mean of two bytes comes rounded up; of their opposites it is the one rounded down.
    template <class Load>
    HWY_INLINE PixelVec one(std::int32_t x, const Load& load) const {
        const ByteTag d;
        const ByteVec c = hn::BitCast(d, load(row, x));
        const ByteVec other = hn::BitCast(d, load(others, x + dx));
        return opaque(hn::BitCast(PixelTag(), hn::Not(hn::AverageRound(hn::Not(c), other))));
    }
};

void emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy, std::int32_t first,
            std::int32_t last) {
    const std::int32_t reach = std::abs(std::clamp(dx, -source.width, source.width));
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y) {
        const Pixel* others = source.row(inside(std::int64_t{y} + dy, source.height));
        const HalfDifference single{source.row(y), others, dx < 0 ? -reach : reach};
        make_row(target.row(y), target.width, reach, streaming,
                 source.row(inside(std::int64_t{y} + 1 + std::max(dy, 0), source.height)),
                 EachOfSeveral<HalfDifference>{single});
    }
    if (streaming) hwy::FlushStream();
}
#else
using plain::emboss;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(emboss);

void emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy, std::int32_t first,
            std::int32_t last) {
    pick_kernel(plain::emboss, HWY_DYNAMIC_DISPATCH(emboss))(source, target, dx, dy, first, last);
}

}  // namespace pixvane::filters
#endif
