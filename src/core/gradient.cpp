// Linear gradients over a rectangle.
// SPDX-License-Identifier: MIT
#include "core/gradient.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "core/gradient.cpp"
#include <hwy/foreach_target.h>  // this file once for each instruction set

#include <cstring>

#include "core/kernel_path.h"
#include "core/pixel_runs-inl.h"

#ifndef PIXVANE_CORE_GRADIENT_LINE
#define PIXVANE_CORE_GRADIENT_LINE
namespace pixvane {
namespace {

/// t along one row: (start + step * x) / denominator.
struct GradientLine {
    std::int64_t start;
    std::int64_t step;
    std::int64_t denominator;
};

GradientLine line_of(const LinearGradient& gradient, std::int32_t row) {
    const std::int64_t width = gradient.width;
    const std::int64_t height = gradient.height;
    const std::int64_t down = 2 * std::int64_t{row} + 1;
    switch (gradient.mode) {
        case GradientMode::Horizontal:
            return {1, 2, 2 * width};
        case GradientMode::Vertical:
            return {down, 0, 2 * height};
        case GradientMode::ForwardDiagonal:
            return {height + down * width, 2 * height, 4 * width * height};
        case GradientMode::BackwardDiagonal:
            break;
    }
    return {(2 * width - 1) * height + down * width, -2 * height, 4 * width * height};
}

}  // namespace
}  // namespace pixvane
#endif

#if HWY_ONCE
namespace pixvane {

void plain::gradient_row(const LinearGradient& gradient, std::int32_t x, std::int32_t y, Pixel* to,
                         std::size_t count) {
    const GradientLine line = line_of(gradient, y);
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t t = line.start + line.step * (x + static_cast<std::int64_t>(i));
        const auto mix = [&](std::uint32_t from, std::uint32_t end) {
            const std::int64_t sum = from * (line.denominator - t) + end * t;
            return static_cast<std::uint32_t>((2 * sum + line.denominator) / (2 * line.denominator));
        };
        to[i] = make_pixel(mix(alpha_of(gradient.from), alpha_of(gradient.to)),
                           mix(red_of(gradient.from), red_of(gradient.to)),
                           mix(green_of(gradient.from), green_of(gradient.to)),
                           mix(blue_of(gradient.from), blue_of(gradient.to)));
    }
}

}  // namespace pixvane
#endif

HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {
#if PIXVANE_VECTORS
using PlaceTag = hn::ScalableTag<double>;
using PlaceVec = hn::Vec<PlaceTag>;
using HalfTag = hn::Rebind<std::int32_t, PlaceTag>;
using HalfVec = hn::Vec<HalfTag>;

// One channel along a row, as (start + step * x) * scale. Start and step are whole numbers below 2^42, but
// for the half that keeps whole results from falling short: the product is off by less than that.
struct ChannelLine {
    double start, step, scale;

    ChannelLine(const GradientLine& line, std::uint32_t from, std::uint32_t to) {
        const std::int64_t change = std::int64_t{to} - from;
        start =
            static_cast<double>(2 * (from * line.denominator + change * line.start) + line.denominator) + 0.5;
        step = static_cast<double>(2 * change * line.step);
        scale = 1 / static_cast<double>(2 * line.denominator);
    }
    HWY_INLINE HalfVec at(PlaceVec x) const {
        const PlaceTag d;
        const PlaceVec sum = hn::MulAdd(x, hn::Set(d, step), hn::Set(d, start));
        return hn::DemoteTo(HalfTag(), hn::Mul(sum, hn::Set(d, scale)));
    }
};

void gradient_row(const LinearGradient& gradient, std::int32_t x, std::int32_t y, Pixel* to,
                  std::size_t count) {
    const PlaceTag d;
    const HalfTag dHalf;
    constexpr std::size_t kLanes = hn::MaxLanes(PlaceTag());
    const GradientLine line = line_of(gradient, y);
    const ChannelLine alpha(line, alpha_of(gradient.from), alpha_of(gradient.to));
    const ChannelLine red(line, red_of(gradient.from), red_of(gradient.to));
    const ChannelLine green(line, green_of(gradient.from), green_of(gradient.to));
    const ChannelLine blue(line, blue_of(gradient.from), blue_of(gradient.to));
    PlaceVec place = hn::Iota(d, x);
    const PlaceVec advance = hn::Set(d, kLanes);
    for (std::size_t i = 0; i < count; i += kLanes, place = hn::Add(place, advance)) {
        const HalfVec high = hn::Or(hn::ShiftLeft<24>(alpha.at(place)), hn::ShiftLeft<16>(red.at(place)));
        const HalfVec pixels = hn::Or(high, hn::Or(hn::ShiftLeft<8>(green.at(place)), blue.at(place)));
        if (i + kLanes <= count) {
            hn::StoreU(pixels, dHalf, reinterpret_cast<std::int32_t*>(to + i));
        } else {
            HWY_ALIGN std::int32_t few[kLanes];
            hn::Store(pixels, dHalf, few);
            std::memcpy(to + i, few, (count - i) * sizeof(Pixel));
        }
    }
}
#else
using plain::gradient_row;
#endif
}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace pixvane {
HWY_EXPORT(gradient_row);

void gradient_row(const LinearGradient& gradient, std::int32_t x, std::int32_t y, Pixel* to,
                  std::size_t count) {
    pick_kernel(plain::gradient_row, HWY_DYNAMIC_DISPATCH(gradient_row))(gradient, x, y, to, count);
}
}  // namespace pixvane
#endif
