// Adjustments that choose a pixel by the mean of the three channels.
// SPDX-License-Identifier: MIT
#include "filters/adjust/mean_palette.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/mean_palette.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>

#include "core/kernel_path.h"
#include "filters/adjust/byte_table-inl.h"
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
    const PixelTag d;
    const IntTag ints;
    const hn::Repartition<std::int16_t, PixelTag> words;
    const auto ones = hn::Set(words, 1);
    const auto blueAndRed = hn::BitCast(words, hn::And(p, hn::Set(d, 0x00FF00FF)));
    IntVec unused = hn::Zero(ints);
    const IntVec green = hn::BitCast(ints, green_lanes(p));
    return hn::BitCast(d, hn::ReorderWidenMulAccumulate(ints, blueAndRed, ones, green, unused));
}

struct Threshold {
    std::int32_t largestBelow;  // of the sum of the channels
    Pixel above, below;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const PixelTag d;
        const IntTag ints;
        const auto isAbove = hn::Gt(hn::BitCast(ints, sum_lanes(pixels)), hn::Set(ints, largestBelow));
        return hn::IfThenElse(hn::RebindMask(d, isAbove), hn::Set(d, above), hn::Set(d, below));
    }
};

void monochrome(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, Pixel above, Pixel below) {
    if (level < 0) below = above;
    const std::int32_t largestMean = std::clamp(level, 0, 255);
    transform_vectors(source.data, target.data, source.count(), Threshold{largestMean * 3 + 2, above, below});
}

// The mean of each pixel, by a product that is exact for sums up to 765.
HWY_INLINE PixelVec mean_lanes(PixelVec pixels) {
    const hn::Repartition<std::uint16_t, PixelTag> words;
    const auto sum = hn::BitCast(words, sum_lanes(pixels));
    return hn::BitCast(PixelTag(), hn::MulHigh(sum, hn::Set(words, 21846)));
}

#if HWY_TARGET == HWY_AVX3_DL

// Pixels of a palette by the means of four vectors of pixels. The means fill one vector of bytes, so that
// each channel is looked up once for all four.
class PaletteLookUp {
public:
    explicit PaletteLookUp(const MeanPalette& palette)
        : red_(Channel(palette, 16).bytes),
          green_(Channel(palette, 8).bytes),
          blue_(Channel(palette, 0).bytes) {}

    HWY_INLINE PixelQuad operator()(const PixelQuad& means) const {
        const PixelTag d;
        const ByteTag bytes;
        const hn::Repartition<std::uint16_t, PixelTag> words;
        const PixelVec together = hn::Or(hn::Or(means.v0, hn::ShiftLeft<8>(means.v1)),
                                         hn::Or(hn::ShiftLeft<16>(means.v2), hn::ShiftLeft<24>(means.v3)));
        // A block has the four means of the first vector's block, then those of the second one's, and so on.
        const ByteVec index = hn::BitCast(bytes, bytes_turned(together));
        const ByteVec red = red_(index);
        const ByteVec green = green_(index);
        const ByteVec blue = blue_(index);
        const ByteVec alpha = hn::Set(bytes, 255);
        const auto blueGreen01 = hn::BitCast(words, hn::InterleaveLower(bytes, blue, green));
        const auto blueGreen23 = hn::BitCast(words, hn::InterleaveUpper(bytes, blue, green));
        const auto redAlpha01 = hn::BitCast(words, hn::InterleaveLower(bytes, red, alpha));
        const auto redAlpha23 = hn::BitCast(words, hn::InterleaveUpper(bytes, red, alpha));
        return {hn::BitCast(d, hn::InterleaveLower(words, blueGreen01, redAlpha01)),
                hn::BitCast(d, hn::InterleaveUpper(words, blueGreen01, redAlpha01)),
                hn::BitCast(d, hn::InterleaveLower(words, blueGreen23, redAlpha23)),
                hn::BitCast(d, hn::InterleaveUpper(words, blueGreen23, redAlpha23))};
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
};

#else

class PaletteLookUp {
public:
    explicit PaletteLookUp(const MeanPalette& palette) : pixels_(palette.pixels.data()) {}

    HWY_INLINE PixelQuad operator()(const PixelQuad& means) const {
        return {found(means.v0), found(means.v1), found(means.v2), found(means.v3)};
    }

private:
    HWY_INLINE PixelVec found(PixelVec mean) const {
        return hn::GatherIndex(PixelTag(), pixels_, hn::BitCast(IntTag(), mean));
    }

    const Pixel* pixels_;
};

#endif

template <bool kKeeps>
struct ByMean {
    PaletteLookUp lookUp;
    std::int32_t keptFrom;

    HWY_INLINE PixelQuad operator()(const PixelQuad& q) const {
        const PixelQuad means{mean_lanes(q.v0), mean_lanes(q.v1), mean_lanes(q.v2), mean_lanes(q.v3)};
        const PixelQuad found = lookUp(means);
        if constexpr (!kKeeps) return found;
        return {chosen(means.v0, found.v0, q.v0), chosen(means.v1, found.v1, q.v1),
                chosen(means.v2, found.v2, q.v2), chosen(means.v3, found.v3, q.v3)};
    }

private:
    HWY_INLINE PixelVec chosen(PixelVec mean, PixelVec found, PixelVec pixels) const {
        const IntTag d;
        const auto kept = hn::Lt(hn::BitCast(d, mean), hn::Set(d, keptFrom));
        return hn::IfThenElse(hn::RebindMask(PixelTag(), kept), found, pixels);
    }
};

void apply_mean_palette(ConstPixelBuffer source, PixelBuffer target, const MeanPalette& palette) {
    const PaletteLookUp lookUp(palette);
    if (palette.keptFrom > 255) {
        transform_quads(source.data, target.data, source.count(), ByMean<false>{lookUp, 256});
    } else {
        transform_quads(source.data, target.data, source.count(), ByMean<true>{lookUp, palette.keptFrom});
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
