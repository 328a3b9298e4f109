// Sharpening where the local range is large.
// SPDX-License-Identifier: MIT
#include "filters/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/sharpen_edge.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/area_plain.h"
#include "filters/channel_spread.h"
#include "filters/window_ranges-inl.h"

#if HWY_ONCE
namespace pixvane::filters {
namespace {

std::int32_t smallest_range(ConstPixelBuffer source, std::int32_t x, std::int32_t y) {
    PixelSpread spread;
    for (std::int32_t dy = -1; dy <= 1; ++dy) {
        for (std::int32_t dx = -1; dx <= 1; ++dx)
            spread.widen(source.row(inside(y + dy, source.height))[inside(x + dx, source.width)]);
    }
    return spread.smallest();
}

}  // namespace

void plain::sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                         std::int32_t last) {
    plain::convolve(source, target, sharpen_kernel(), first, last);
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x)
            if (smallest_range(source, x, y) < level) target.row(y)[x] = source.row(y)[x];
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

struct SharpenEdges {
    const Pixel* above;
    const Pixel* row;
    const Pixel* below;
    std::int32_t level;

    template <class Load>
    HWY_INLINE PixelVec one(std::int32_t x, const Load& load) const {
        const PixelVec centre = load(row, x);
        const PixelVec corners[4] = {load(above, x - 1), load(above, x + 1), load(below, x - 1),
                                     load(below, x + 1)};
        LowHigh values = joined(low_high_of(centre), low_high_of(load(row, x - 1)));
        values = joined(values, low_high_of(load(row, x + 1)));
        values = joined(values, low_high_of(load(above, x)));
        values = joined(values, low_high_of(load(below, x)));
        for (const PixelVec corner : corners) values = joined(values, low_high_of(corner));
        const auto even = hn::Lt(smallest_range_lanes(values), hn::Set(IntTag(), level));
        const PixelVec sharp = pixels_of_words(
            sharpened(blue_red_words(centre), blue_red_words(corners[0]), blue_red_words(corners[1]),
                      blue_red_words(corners[2]), blue_red_words(corners[3])),
            sharpened(green_alpha_words(centre), green_alpha_words(corners[0]), green_alpha_words(corners[1]),
                      green_alpha_words(corners[2]), green_alpha_words(corners[3])));
        return hn::IfThenElse(hn::RebindMask(PixelTag(), even), centre, sharp);
    }

private:
    // (8 centre - corners) / 4, limited to 0..255.
    static HWY_INLINE WordVec sharpened(WordVec centre, WordVec a, WordVec b, WordVec c, WordVec d) {
        const WordVec corners = hn::Add(hn::Add(a, b), hn::Add(c, d));
        const WordVec sharp = hn::ShiftRight<2>(hn::SaturatedSub(hn::ShiftLeft<3>(centre), corners));
        return hn::Min(sharp, hn::Set(WordTag(), 255));
    }
};

void sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last) {
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y) {
        const SharpenEdges single{source.row(inside(y - 1, source.height)), source.row(y),
                                  source.row(inside(y + 1, source.height)), level};
        make_row(target.row(y), target.width, 1, streaming, source.row(inside(y + 2, source.height)),
                 EachOfSeveral<SharpenEdges>{single});
    }
    if (streaming) hwy::FlushStream();
}
#else
using plain::sharpen_edge;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(sharpen_edge);

void sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last) {
    pick_kernel(plain::sharpen_edge, HWY_DYNAMIC_DISPATCH(sharpen_edge))(source, target, level, first, last);
}

}  // namespace pixvane::filters
#endif
