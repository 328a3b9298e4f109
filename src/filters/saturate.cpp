// Colour strength.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/saturate.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/integer_math.h"
#include "core/kernel_path.h"
#include "filters/byte_table-inl.h"
#include "filters/luma-inl.h"
#include "filters/plain.h"

#if HWY_ONCE
namespace pixvane::filters {

void plain::saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent) {
    const double f = percent * 0.01;
    for (std::size_t i = 0; i < source.count(); ++i) {
        const Pixel p = source.data[i];
        const std::uint32_t y = std::min(luma_blue_first(p), 255u);
        const std::int32_t base = trunc_to_int32(y * (1.0 - f));
        const auto channel = [=](std::uint32_t c) { return clamp_to_byte(trunc_to_int32(c * f + base)); };
        target.data[i] = make_pixel(0xFF, channel(red_of(p)), channel(green_of(p)), channel(blue_of(p)));
    }
}

}  // namespace pixvane::filters
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using namespace pixvane::HWY_NAMESPACE;

HWY_INLINE PixelVec joined(IntVec red, IntVec green, IntVec blue) {
    const IntTag d;
    const auto limited = [&](IntVec v) HWY_ATTR { return hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, 255)); };
    const IntVec channels =
        hn::Or(hn::Or(hn::ShiftLeft<16>(limited(red)), hn::ShiftLeft<8>(limited(green))), limited(blue));
    return opaque(hn::BitCast(PixelTag(), channels));
}

// The formula as it stands.
struct InDoubles {
    double f;
    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const DoubleTag d;
        const DoublePair r = to_doubles(red_lanes(pixels));
        const DoublePair g = to_doubles(green_lanes(pixels));
        const DoublePair b = to_doubles(blue_lanes(pixels));
        const DoublePair y = to_doubles(hn::BitCast(PixelTag(), luma_lanes_blue_first(r, g, b)));
        const DoubleVec factor = hn::Set(d, f);
        const DoubleVec rest = hn::Set(d, 1.0 - f);
        const DoublePair base{hn::Trunc(hn::Mul(y.low, rest)), hn::Trunc(hn::Mul(y.high, rest))};
        const auto channel = [&](const DoublePair& c) HWY_ATTR {
            return to_ints(
                {hn::Add(hn::Mul(c.low, factor), base.low), hn::Add(hn::Mul(c.high, factor), base.high)});
        };
        return joined(channel(r), channel(g), channel(b));
    }
};

#if HWY_TARGET == HWY_AVX3_DL

// trunc(Y (1 - f)) for each Y in the lanes, from the two halves of a word.
class BaseTable {
public:
    explicit BaseTable(double f) : low_(Bytes(f, 0).values), high_(Bytes(f, 8).values) {}

    HWY_INLINE IntVec operator()(IntVec luma) const {
        const PixelTag d;
        const ByteVec index = hn::BitCast(ByteTag(), hn::BitCast(d, luma));
        const PixelVec low = hn::And(hn::BitCast(d, low_(index)), hn::Set(d, 0xFF));
        const PixelVec high = hn::ShiftLeft<24>(hn::BitCast(d, high_(index)));
        const IntTag ints;
        return hn::Or(hn::ShiftRight<16>(hn::BitCast(ints, high)), hn::BitCast(ints, low));
    }

private:
    struct Bytes {
        Bytes(double f, int shift) {
            for (int y = 0; y < 256; ++y)
                values[y] = static_cast<std::uint8_t>(static_cast<std::int32_t>(y * (1.0 - f)) >> shift);
        }
        std::uint8_t values[256];
    };

    ByteTable low_, high_;
};

#else

class BaseTable {
public:
    explicit BaseTable(double f) {
        for (int y = 0; y < 256; ++y) values_[y] = static_cast<std::int32_t>(y * (1.0 - f));
    }
    HWY_INLINE IntVec operator()(IntVec luma) const { return hn::GatherIndex(IntTag(), values_, luma); }

private:
    std::int32_t values_[256];
};

#endif

// With a factor that is a little too large, so that a product which is a whole number doesn't fall below it.
struct InFloats {
    float f;
    BaseTable bases;

    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const hn::RebindToFloat<IntTag> d;
        const PixelVec red = red_lanes(pixels);
        const PixelVec green = green_lanes(pixels);
        const PixelVec blue = blue_lanes(pixels);
        const auto base = hn::ConvertTo(
            d, bases(luma_lanes_blue_first(to_doubles(red), to_doubles(green), to_doubles(blue))));
        const auto channel = [&](PixelVec c) HWY_ATTR {
            const auto value = hn::ConvertTo(d, hn::BitCast(IntTag(), c));
            return hn::ConvertTo(IntTag(), hn::MulAdd(value, hn::Set(d, f), base));
        };
        return joined(channel(red), channel(green), channel(blue));
    }
};

// The channel c scaled is c * percent hundredths: at least a hundredth below the next whole number, so that
// floats tell it apart, or a whole number. What counts is whether doubles give that whole number too, or fall
// below it; the base is whole and changes nothing about it, since a sum is rounded to no less than it.
bool floats_serve(std::int32_t percent) {
    if (percent < -1000 || percent > 1000) return false;
    for (std::int32_t c = 0; c < 256; ++c) {
        const std::int32_t hundredths = c * percent;
        if (hundredths % 100 == 0 && c * (percent * 0.01) < hundredths / 100) return false;
    }
    return true;
}

void saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent) {
    // Beyond this, sums may leave the range of integers.
    constexpr std::int32_t kLargestPercent = 100'000;
    const double f = percent * 0.01;
    if (floats_serve(percent)) {
        const float larger = std::nextafter(static_cast<float>(f), std::numeric_limits<float>::infinity());
        transform_vectors(source.data, target.data, source.count(), InFloats{larger, BaseTable(f)});
    } else if (percent >= -kLargestPercent && percent <= kLargestPercent) {
        transform_vectors(source.data, target.data, source.count(), InDoubles{f});
    } else {
        plain::saturate(source, target, percent);
    }
}
#else
using plain::saturate;
#endif
}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane::filters {

HWY_EXPORT(saturate);

void saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent) {
    pick_kernel(plain::saturate, HWY_DYNAMIC_DISPATCH(saturate))(source, target, percent);
}

}  // namespace pixvane::filters
#endif
