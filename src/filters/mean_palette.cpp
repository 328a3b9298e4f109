// Adjustments that choose a pixel by the mean of the three channels.
// SPDX-License-Identifier: MIT
#include "filters/mean_palette.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/mean_palette.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/kernel_path.h"
#include "filters/byte_table-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {
namespace {

std::int32_t mean_of(Pixel p) {
    return static_cast<std::int32_t>((red_of(p) + green_of(p) + blue_of(p)) / 3);
}

}  // namespace

void plain::monochrome(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, Pixel above,
                       Pixel below) {
    for (std::size_t i = 0; i < source.count(); ++i)
        target.data[i] = mean_of(source.data[i]) > level ? above : below;
}

void plain::apply_mean_palette(ConstPixelBuffer source, PixelBuffer target, const MeanPalette& palette) {
    for (std::size_t i = 0; i < source.count(); ++i) {
        const std::int32_t mean = mean_of(source.data[i]);
        target.data[i] =
            mean < palette.keptFrom ? palette.pixels[static_cast<std::size_t>(mean)] : source.data[i];
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

HWY_INLINE PixelVec sum_lanes(PixelVec p) {
    return hn::Add(hn::Add(blue_lanes(p), green_lanes(p)), red_lanes(p));
}

struct Threshold {
    std::uint32_t largestBelow;  // of the sum of the channels
    Pixel above, below;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const PixelTag d;
        return hn::IfThenElse(hn::Gt(sum_lanes(pixels), hn::Set(d, largestBelow)), hn::Set(d, above),
                              hn::Set(d, below));
    }
};

void monochrome(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, Pixel above, Pixel below) {
    if (level < 0) below = above;
    const auto largestMean = static_cast<std::uint32_t>(std::clamp(level, 0, 255));
    transform_vectors(source.data, target.data, source.count(), Threshold{largestMean * 3 + 2, above, below});
}

// The mean of each pixel, by a product that is exact for sums up to 765.
HWY_INLINE PixelVec mean_lanes(PixelVec pixels) {
    const hn::Repartition<std::uint16_t, PixelTag> words;
    const auto sum = hn::BitCast(words, sum_lanes(pixels));
    return hn::BitCast(PixelTag(), hn::MulHigh(sum, hn::Set(words, 21846)));
}

// Pixels of a palette by their number in each lane.
class PaletteLookUp {
public:
#if HWY_TARGET == HWY_AVX3_DL
    explicit PaletteLookUp(const MeanPalette& palette)
        : red_(Channel(palette, 16).bytes),
          green_(Channel(palette, 8).bytes),
          blue_(Channel(palette, 0).bytes) {}

    HWY_INLINE PixelVec operator()(PixelVec index) const {
        const PixelTag d;
        const ByteVec everywhere = hn::BitCast(ByteTag(), grey_pixels(index));
        const PixelVec r = hn::And(hn::BitCast(d, red_(everywhere)), hn::Set(d, 0x00FF0000));
        const PixelVec g = hn::And(hn::BitCast(d, green_(everywhere)), hn::Set(d, 0x0000FF00));
        const PixelVec b = hn::And(hn::BitCast(d, blue_(everywhere)), hn::Set(d, 0x000000FF));
        return opaque(hn::Or(hn::Or(r, g), b));
    }

private:
    struct Channel {
        Channel(const MeanPalette& palette, std::uint32_t shift) {
            for (std::size_t i = 0; i < 256; ++i)
                bytes[i] = static_cast<std::uint8_t>(palette.pixels[i] >> shift);
        }
        std::uint8_t bytes[256];
    };

    ByteTable red_, green_, blue_;
#else
    explicit PaletteLookUp(const MeanPalette& palette) : pixels_(palette.pixels.data()) {}

    HWY_INLINE PixelVec operator()(PixelVec index) const {
        return hn::GatherIndex(PixelTag(), pixels_, hn::BitCast(IntTag(), index));
    }

private:
    const Pixel* pixels_;
#endif
};

struct ByMean {
    PaletteLookUp lookUp;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const { return lookUp(mean_lanes(pixels)); }
};

struct ByMeanBelow {
    PaletteLookUp lookUp;
    std::uint32_t keptFrom;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const PixelVec mean = mean_lanes(pixels);
        return hn::IfThenElse(hn::Lt(mean, hn::Set(PixelTag(), keptFrom)), lookUp(mean), pixels);
    }
};

void apply_mean_palette(ConstPixelBuffer source, PixelBuffer target, const MeanPalette& palette) {
    const PaletteLookUp lookUp(palette);
    const auto keptFrom = static_cast<std::uint32_t>(std::clamp(palette.keptFrom, 0, 256));
    if (keptFrom == 256) {
        transform_vectors(source.data, target.data, source.count(), ByMean{lookUp});
    } else {
        transform_vectors(source.data, target.data, source.count(), ByMeanBelow{lookUp, keptFrom});
    }
}
#else
using plain::apply_mean_palette;
using plain::monochrome;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(monochrome);
HWY_EXPORT(apply_mean_palette);

void monochrome(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, Pixel above, Pixel below) {
    pick_kernel(plain::monochrome, HWY_DYNAMIC_DISPATCH(monochrome))(source, target, level, above, below);
}

void apply_mean_palette(ConstPixelBuffer source, PixelBuffer target, const MeanPalette& palette) {
    pick_kernel(plain::apply_mean_palette, HWY_DYNAMIC_DISPATCH(apply_mean_palette))(source, target, palette);
}

}  // namespace pixvane::filters
#endif
