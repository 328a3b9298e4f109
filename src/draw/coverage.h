// Blending where a shape covers pixels only in part.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/compose.h"
#include "draw/draw_scratch.h"
#include "draw/paint.h"
#include "draw/rasterizer.h"

namespace pixvane {

/// Source-over (core/compose.h) of a straight-alpha pixel that covers only `coverage` / 255 of the one below.
/// With the source's alpha s, coverage c and the destination's alpha d, each 0 to 1, the result's alpha is
/// a = s c + d (1 - s c) and each channel (s c source + d (1 - s c) destination) / a: exact fractions,
/// rounded once, halves up.
inline Pixel cover(Pixel destination, Pixel source, std::uint32_t coverage) {
    constexpr std::uint32_t kWhole = 255 * 255;
    const std::uint32_t s = alpha_of(source) * coverage;
    if (s == 0) return destination;
    if (s == kWhole) return source;
    if (alpha_of(destination) == 255) {
        const auto blend = [&](std::uint32_t from, std::uint32_t over) {
            return (s * over + (kWhole - s) * from + kWhole / 2) / kWhole;
        };
        return make_pixel(255, blend(red_of(destination), red_of(source)),
                          blend(green_of(destination), green_of(source)),
                          blend(blue_of(destination), blue_of(source)));
    }
    const std::uint64_t over = s * 255u;
    const std::uint64_t from = alpha_of(destination) * (kWhole - s);
    const std::uint64_t total = over + from;
    const auto blend = [&](std::uint64_t below, std::uint64_t above) {
        return static_cast<std::uint32_t>((2 * (over * above + from * below) + total) / (2 * total));
    };
    return make_pixel(static_cast<std::uint32_t>((2 * total + kWhole) / (2 * kWhole)),
                      blend(red_of(destination), red_of(source)),
                      blend(green_of(destination), green_of(source)),
                      blend(blue_of(destination), blue_of(source)));
}

/// The common part; without one, no pixels.
PixelRect intersection(PixelRect a, PixelRect b);

/// Blends the paint over every pixel of `area` that lies in the target.
void blend_area(PixelBuffer target, PixelRect area, const Paint& paint, DrawScratch& scratch);
/// Blends the paint where the mask covers pixels, as much as it does. The mask lies within the target.
void blend_mask(PixelBuffer target, const Mask& mask, const Paint& paint, DrawScratch& scratch);

}  // namespace pixvane
