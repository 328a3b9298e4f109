// Grey by luma.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/desaturate.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include "core/kernel_path.h"
#include "filters/adjust/luma-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::desaturate(ConstPixelBuffer source, PixelBuffer target) {
    for (std::size_t i = 0; i < source.count(); ++i) {
        const std::uint32_t y = luma_blue_last(source.data[i]);
        target.data[i] = make_pixel(0xFF, y, y, y);
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

struct ToGrey {
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        return opaque(luma_everywhere<BlueIs::Last>(pixels));
    }
};

void desaturate(ConstPixelBuffer source, PixelBuffer target) {
    transform_vectors(source.data, target.data, source.count(), ToGrey());
}
#else
using plain::desaturate;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(desaturate);

void desaturate(ConstPixelBuffer source, PixelBuffer target) {
    pick_kernel(plain::desaturate, HWY_DYNAMIC_DISPATCH(desaturate))(source, target);
}

}  // namespace pixvane::filters
#endif
