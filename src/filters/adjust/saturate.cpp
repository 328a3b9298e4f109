// Colour strength.
// SPDX-License-Identifier: MIT
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "filters/adjust/saturate.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/integer_math.h"
#include "core/kernel_path.h"
#include "filters/adjust/byte_table-inl.h"
#include "filters/adjust/luma-inl.h"
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

// Pixels of channels that are 0..255.
HWY_INLINE PixelVec joined(IntVec red, IntVec green, IntVec blue) {
    const IntVec channels = hn::Or(hn::Or(hn::ShiftLeft<16>(red), hn::ShiftLeft<8>(green)), blue);
    return opaque(hn::BitCast(PixelTag(), channels));
}

HWY_INLINE IntVec limited(IntVec v) {
    const IntTag d;
    return hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, 255));
}

// The formula as it stands.
struct InDoubles {
    double f;

    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const DoubleTag d;
        const DoublePair y = to_doubles(luma_lanes<BlueIs::First>(pixels));
        const DoubleVec factor = hn::Set(d, f);
        const DoubleVec rest = hn::Set(d, 1.0 - f);
        const DoublePair base{hn::Trunc(hn::Mul(y.low, rest)), hn::Trunc(hn::Mul(y.high, rest))};
        const auto channel = [&](PixelVec values) HWY_ATTR {
            const DoublePair c = to_doubles(values);
            return limited(to_ints(
                {hn::Add(hn::Mul(c.low, factor), base.low), hn::Add(hn::Mul(c.high, factor), base.high)}));
        };
        return joined(channel(red_lanes(pixels)), channel(green_lanes(pixels)), channel(blue_lanes(pixels)));
    }
};

// In floats, with a factor that is a little too large, so that a product which is a whole number doesn't fall
// below it.
struct InFloats {
    float f;
    float rest;               // 1 - f for the base, if floats serve there as well
    std::int32_t bases[256];  // else of each luma
    bool restServes;

    explicit InFloats(double factor)
        : f(std::nextafter(static_cast<float>(factor), std::numeric_limits<float>::infinity())) {
        const double exactRest = 1.0 - factor;
        const auto nearest = static_cast<float>(exactRest);
        rest = std::nextafter(nearest, std::copysign(std::numeric_limits<float>::infinity(), nearest));
        restServes = true;
        for (std::int32_t y = 0; y < 256; ++y) {
            bases[y] = static_cast<std::int32_t>(y * exactRest);
            restServes = restServes && static_cast<std::int32_t>(static_cast<float>(y) * rest) == bases[y];
        }
    }

    HWY_INLINE PixelVec operator()(PixelVec pixels) const {
        const IntTag ints;
        const FloatTag d;
        const FloatChannels channels = to_floats(pixels);
        const IntVec luma = hn::BitCast(ints, luma_lanes<BlueIs::First>(pixels));
        const FloatVec base = restServes ? hn::Trunc(hn::Mul(hn::ConvertTo(d, luma), hn::Set(d, rest)))
                                         : hn::ConvertTo(d, hn::GatherIndex(ints, bases, luma));
        // Rounding after half of one was taken off, all but less than a hundredth, cuts off the fraction.
        const FloatVec lowered = hn::Sub(base, hn::Set(d, 0.495F));
        const auto channel = [&](FloatVec c) HWY_ATTR {
            const FloatVec value = hn::MulAdd(c, hn::Set(d, f), lowered);
            const FloatVec inRange = hn::Min(hn::Max(value, hn::Zero(d)), hn::Set(d, 255.0F));
            return hn::And(hn::BitCast(ints, hn::Add(inRange, hn::Set(d, kRounder))), hn::Set(ints, 0xFF));
        };
        return joined(channel(channels.red), channel(channels.green), channel(channels.blue));
    }
};

// A channel c scaled is c * percent hundredths: at least a hundredth below the next whole number, so that
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

#if HWY_TARGET == HWY_AVX3_DL

// From 0 to 200 percent all parts of the sum fit bytes, and come from tables.

// What the luma of each pixel of a quad gives, in all four bytes of the pixel.
struct OfLuma {
    ByteTable table;
    QuadBytes bytes;

    HWY_INLINE PixelQuad operator()(const PixelQuad& q) const {
        return bytes.spread(table(bytes.gathered(luma(q.v0), luma(q.v1), luma(q.v2), luma(q.v3))));
    }

private:
    static HWY_INLINE PixelVec luma(PixelVec pixels) {
        return hn::BitCast(PixelTag(), luma_low_bytes<BlueIs::First>(pixels));
    }
};

// From 0 to 100: scaled(c) + base(Y), where doubles may fall short of a whole number if the sum is small: up
// to the limit of c the result is one less.
struct WeakerInBytes {
    struct Entries {
        std::uint8_t scaled[256], limit[256], base[256];

        explicit Entries(std::int32_t percent) {
            const double f = percent * 0.01;
            for (std::int32_t i = 0; i < 256; ++i) {
                const std::int32_t whole = i * percent / 100;
                std::int32_t n = 255;
                while (n > 0 && i * f + (n - whole) >= n) --n;
                scaled[i] = static_cast<std::uint8_t>(whole);
                limit[i] = static_cast<std::uint8_t>(n);
                base[i] = static_cast<std::uint8_t>(i * (1.0 - f));
            }
        }
    };

    explicit WeakerInBytes(const Entries& entries)
        : scaled(entries.scaled), limit(entries.limit), base{ByteTable(entries.base), QuadBytes()} {}

    HWY_INLINE PixelQuad operator()(const PixelQuad& q) const {
        const PixelQuad bases = base(q);
        return {mixed(q.v0, bases.v0), mixed(q.v1, bases.v1), mixed(q.v2, bases.v2), mixed(q.v3, bases.v3)};
    }

private:
    HWY_INLINE PixelVec mixed(PixelVec pixels, PixelVec bases) const {
        const ByteTag d;
        const ByteVec c = hn::BitCast(d, pixels);
        const ByteVec sum = hn::SaturatedAdd(scaled(c), hn::BitCast(d, bases));
        const auto withinLimit = hn::Eq(hn::Min(sum, limit(c)), sum);
        const ByteVec less = hn::IfThenElseZero(withinLimit, hn::Set(d, 1));
        return opaque(hn::BitCast(PixelTag(), hn::SaturatedSub(sum, less)));
    }

    ByteTable scaled, limit;
    OfLuma base;
};

// From 100 to 200: c + gain(c) - loss(Y). The sum of doubles is exact here, as it is no larger than its
// parts.
struct StrongerInBytes {
    struct Entries {
        std::uint8_t gain[256], loss[256];

        explicit Entries(std::int32_t percent) {
            const double f = percent * 0.01;
            for (std::int32_t i = 0; i < 256; ++i) {
                gain[i] = static_cast<std::uint8_t>(static_cast<std::int32_t>(i * f) - i);
                loss[i] = static_cast<std::uint8_t>(-static_cast<std::int32_t>(i * (1.0 - f)));
            }
        }
    };

    explicit StrongerInBytes(const Entries& entries)
        : gain(entries.gain), loss{ByteTable(entries.loss), QuadBytes()} {}

    HWY_INLINE PixelQuad operator()(const PixelQuad& q) const {
        const PixelQuad losses = loss(q);
        return {mixed(q.v0, losses.v0), mixed(q.v1, losses.v1), mixed(q.v2, losses.v2),
                mixed(q.v3, losses.v3)};
    }

private:
    HWY_INLINE PixelVec mixed(PixelVec pixels, PixelVec losses) const {
        const ByteTag d;
        const ByteVec c = hn::BitCast(d, pixels);
        const ByteVec up = gain(c);
        const ByteVec down = hn::BitCast(d, losses);
        const ByteVec raised = hn::SaturatedAdd(c, hn::SaturatedSub(up, down));
        return opaque(hn::BitCast(PixelTag(), hn::SaturatedSub(raised, hn::SaturatedSub(down, up))));
    }

    ByteTable gain;
    OfLuma loss;
};

#endif

void saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent) {
    // Beyond this, sums may leave the range of integers.
    constexpr std::int32_t kLargestPercent = 100'000;
    const double f = percent * 0.01;
    const auto apply = [&](const auto& transform) HWY_ATTR {
        transform_vectors(source.data, target.data, source.count(), transform);
    };
#if HWY_TARGET == HWY_AVX3_DL
    if (percent >= 0 && percent <= 100) {
        const WeakerInBytes weaker{WeakerInBytes::Entries(percent)};
        transform_quads(source.data, target.data, source.count(), weaker);
        return;
    }
    if (percent > 100 && percent <= 200) {
        const StrongerInBytes stronger{StrongerInBytes::Entries(percent)};
        transform_quads(source.data, target.data, source.count(), stronger);
        return;
    }
#endif
    if (floats_serve(percent)) {
        apply(InFloats(f));
    } else if (percent >= -kLargestPercent && percent <= kLargestPercent) {
        apply(InDoubles{f});
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
