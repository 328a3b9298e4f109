// Colour around a point, grey beyond.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/effects/focal_bw.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/adjust/luma.h"
#include "filters/effects/effects_plain.h"
#include "filters/effects/focus.h"
#include "filters/effects/focus_rows-inl.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
                     std::int32_t last) {
    const double perPixel = focus.transition == 0 ? 0.0 : 1.0 / focus.transition;
    for (std::int32_t y = first; y < last; ++y) {
        for (std::int32_t x = 0; x < source.width; ++x) {
            const Pixel p = source.row(y)[x];
            const double d = distance(focus, x, y);
            const std::uint32_t luma = luma_blue_first(p) & 0xFF;
            const double part = (d - focus.radius) * perPixel;
            const auto faded = [=](std::uint32_t c) {
                const std::int32_t difference =
                    static_cast<std::int32_t>(luma) - static_cast<std::int32_t>(c);
                return static_cast<std::uint32_t>(static_cast<std::int32_t>(difference * part + c)) & 0xFF;
            };
            if (d < focus.radius) {
                target.row(y)[x] = p;
            } else if (d < full_distance(focus)) {
                target.row(y)[x] = make_pixel(0xFF, faded(red_of(p)), faded(green_of(p)), faded(blue_of(p)));
            } else {
                target.row(y)[x] = make_pixel(0xFF, luma, luma, luma);
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

// A fade is between the channel and the luma, so it has no bits above the low 8.
class GreyRow {
public:
    GreyRow(ConstPixelBuffer source, const Focus& focus, std::int32_t y)
        : row_(source.row(y)),
          width_(source.width),
          y_(y),
          focus_(focus),
          perPixel_(focus.transition == 0 ? 0.0 : 1.0 / focus.transition) {}

    void start(std::int32_t, std::int32_t) const {}
    void keep(std::int32_t x, std::size_t count, Pixel* to) const {
        std::memcpy(to, row_ + x, count * sizeof(Pixel));
    }
    HWY_INLINE PixelVec complete(std::int32_t x) const {
        return opaque(luma_everywhere<BlueIs::First>(load(x)));
    }
    HWY_INLINE PixelVec change(std::int32_t x) const {
        const DoubleTag d;
        const PixelVec p = load(x);
        const IntVec luma = hn::BitCast(IntTag(), luma_lanes<BlueIs::First>(p));
        const DoublePair distance = distances(focus_, x, y_);
        const auto part_of = [&](DoubleVec v) HWY_ATTR {
            return hn::Mul(hn::Sub(v, hn::Set(d, focus_.radius)), hn::Set(d, perPixel_));
        };
        const DoublePair part{part_of(distance.low), part_of(distance.high)};
        const auto faded = [&](PixelVec channel) HWY_ATTR {
            const DoublePair from = to_doubles(channel);
            const DoublePair difference =
                to_doubles(hn::BitCast(PixelTag(), hn::Sub(luma, hn::BitCast(IntTag(), channel))));
            return to_ints({hn::Add(hn::Mul(difference.low, part.low), from.low),
                            hn::Add(hn::Mul(difference.high, part.high), from.high)});
        };
        return pixels_of_channels(faded(blue_lanes(p)), faded(green_lanes(p)), faded(red_lanes(p)));
    }

private:
    HWY_INLINE PixelVec load(std::int32_t x) const {
        if (HWY_LIKELY(x + lanes_of_pixels() <= width_)) return hn::LoadU(PixelTag(), row_ + x);
        return load_repeating(row_, width_, x);
    }

    const Pixel* row_;
    std::int32_t width_, y_;
    Focus focus_;
    double perPixel_;
};

void focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
              std::int32_t last) {
    const bool streaming = target.rows(first, last).bytes() >= kStreamingBytes;
    for (std::int32_t y = first; y < last; ++y)
        make_focus_row(GreyRow(source, focus, y), focus_spans(focus, y, source.width), source.width,
                       target.row(y), streaming, [](const Pixel*, std::int32_t, std::size_t) {});
    if (streaming) hwy::FlushStream();
}
#else
using plain::focal_bw;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(focal_bw);

void focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
              std::int32_t last) {
    pick_kernel(plain::focal_bw, HWY_DYNAMIC_DISPATCH(focal_bw))(source, target, focus, first, last);
}

}  // namespace pixvane::filters
#endif
