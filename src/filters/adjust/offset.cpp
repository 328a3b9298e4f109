// Channels moved by a constant, and turned to their negative.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/offset.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/integer_math.h"
#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::brightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
                       std::int32_t blue) {
    for (std::size_t i = 0; i < source.count(); ++i) {
        const Pixel p = source.data[i];
        target.data[i] = make_pixel(0xFF, clamp_to_byte(std::int64_t{red_of(p)} + red),
                                    clamp_to_byte(std::int64_t{green_of(p)} + green),
                                    clamp_to_byte(std::int64_t{blue_of(p)} + blue));
    }
}

void plain::invert(ConstPixelBuffer source, PixelBuffer target) {
    for (std::size_t i = 0; i < source.count(); ++i) target.data[i] = ~source.data[i] | kOpaque;
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

// An addend splits into a part above zero and one below; beyond 255 either way a channel is at its limit.
struct AddSaturated {
    Pixel above;
    Pixel below;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const PixelTag d;
        const ByteTag bytes;
        const ByteVec raised =
            hn::SaturatedAdd(hn::BitCast(bytes, opaque(pixels)), hn::BitCast(bytes, hn::Set(d, above)));
        return hn::BitCast(d, hn::SaturatedSub(raised, hn::BitCast(bytes, hn::Set(d, below))));
    }
};

void brightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
                std::int32_t blue) {
    const auto part = [](std::int64_t value) -> std::uint32_t { return clamp_to_byte(value); };
    const AddSaturated add{
        make_pixel(0, part(red), part(green), part(blue)),
        make_pixel(0, part(-std::int64_t{red}), part(-std::int64_t{green}), part(-std::int64_t{blue}))};
    transform_vectors(source.data, target.data, source.count(), add);
}

struct Negate {
    HWY_INLINE PixelVec operator()(PixelVec pixels) const { return opaque(hn::Not(pixels)); }
};

void invert(ConstPixelBuffer source, PixelBuffer target) {
    transform_vectors(source.data, target.data, source.count(), Negate());
}
#else
using plain::brightness;
using plain::invert;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(brightness);
HWY_EXPORT(invert);

void brightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
                std::int32_t blue) {
    pick_kernel(plain::brightness, HWY_DYNAMIC_DISPATCH(brightness))(source, target, red, green, blue);
}

void invert(ConstPixelBuffer source, PixelBuffer target) {
    pick_kernel(plain::invert, HWY_DYNAMIC_DISPATCH(invert))(source, target);
}

}  // namespace pixvane::filters
#endif
