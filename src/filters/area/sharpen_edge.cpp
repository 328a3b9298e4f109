// Sharpening where the local range is large.
// SPDX-License-Identifier: MIT
#include "filters/area/area.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/area/sharpen_edge.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/area/area_plain.h"
#include "filters/area/channel_spread.h"
#include "filters/area/window_ranges-inl.h"

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

// What the rows above, below and of a pixel have to say, of a vector of pixels: the range of three
// neighbours, and the sum of the outer two in words.
struct RowOfThree {
    PixelVec centre;
    LowHigh values;
    WordVec blueRed, greenAlpha;

    template <class Load>
    HWY_INLINE RowOfThree(const Pixel* row, std::int32_t x, const Load& load) : centre(load(row, x)) {
        const PixelVec left = load(row, x - 1);
        const PixelVec right = load(row, x + 1);
        values = joined(joined(low_high_of(left), low_high_of(right)), low_high_of(centre));
        blueRed = hn::Add(blue_red_words(left), blue_red_words(right));
        greenAlpha = hn::Add(green_alpha_words(left), green_alpha_words(right));
    }
};

// (8 centre - corners) / 4, limited to 0..255.
HWY_INLINE WordVec sharpened(WordVec centre, WordVec corners) {
    const WordVec sharp = hn::ShiftRight<2>(hn::SaturatedSub(hn::ShiftLeft<3>(centre), corners));
    return hn::Min(sharp, hn::Set(WordTag(), 255));
}

HWY_INLINE PixelVec sharpen_where_uneven(const RowOfThree& above, const RowOfThree& own,
                                         const RowOfThree& below, IntVec level) {
    const LowHigh values = joined(joined(above.values, below.values), own.values);
    const auto even = hn::Lt(smallest_range_lanes(values), level);
    const PixelVec sharp = pixels_of_words(
        sharpened(blue_red_words(own.centre), hn::Add(above.blueRed, below.blueRed)),
        sharpened(green_alpha_words(own.centre), hn::Add(above.greenAlpha, below.greenAlpha)));
    return hn::IfThenElse(hn::RebindMask(PixelTag(), even), own.centre, sharp);
}

// Some rows at once, column of vectors by column, so that each row's part serves three of them.
constexpr std::int32_t kTogether = 8;

void sharpen_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last, bool streaming) {
    const PixelTag d;
    const IntVec levels = hn::Set(IntTag(), level);
    const std::int32_t lanes = lanes_of_pixels();
    const auto row_of = [&](std::int32_t y) { return source.row(inside(y, source.height)); };
    const auto go_down = [&](std::int32_t x, const auto& load, const auto& write) HWY_ATTR {
        RowOfThree above(row_of(first - 1), x, load);
        RowOfThree own(row_of(first), x, load);
        for (std::int32_t y = first; y < last; ++y) {
            const RowOfThree below(row_of(y + 1), x, load);
            write(sharpen_where_uneven(above, own, below, levels), target.row(y) + x);
            above = own;
            own = below;
        }
    };
    const NearTheEnds nearEnds{source.width};
    if (source.width < lanes) {
        go_down(0, nearEnds, [&](PixelVec made, Pixel* to) HWY_ATTR {
            HWY_ALIGN Pixel buffer[hn::MaxLanes(PixelTag())];
            hn::Store(made, d, buffer);
            std::copy_n(buffer, source.width, to);
        });
        return;
    }
    const auto store = [=](PixelVec made, Pixel* to) HWY_ATTR { hn::StoreU(made, d, to); };
    go_down(0, nearEnds, store);
    std::int32_t x = lanes;
    for (; x + lanes < source.width; x += lanes) {
        if (streaming) {
            go_down(x, InTheMidst(), [=](PixelVec made, Pixel* to) HWY_ATTR { hn::Stream(made, d, to); });
        } else {
            go_down(x, InTheMidst(), store);
        }
    }
    if (x < source.width) go_down(source.width - lanes, nearEnds, store);
}

void sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last) {
    constexpr std::size_t kBytes = hn::MaxLanes(PixelTag()) * sizeof(Pixel);
    const bool isAligned = reinterpret_cast<std::uintptr_t>(target.data) % kBytes == 0 &&
                           static_cast<std::size_t>(target.width) * sizeof(Pixel) % kBytes == 0;
    const bool streaming = isAligned && target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; y += kTogether)
        sharpen_rows(source, target, level, y, std::min(y + kTogether, last), streaming);
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
