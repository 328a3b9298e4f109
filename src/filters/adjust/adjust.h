// Colour adjustments: every output pixel depends on the same input pixel, and at most on statistics of the
// whole picture.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"
#include "core/random.h"
#include "filters/adjust/channel_tables.h"
#include "filters/adjust/levels.h"
#include "filters/adjust/mean_palette.h"
#include "filters/adjust/noise_draws.h"

// Source and target have the same size; they may be the same memory. Every function writes alpha 255 into
// each pixel, and none reads it, unless it says otherwise. A double becomes an integer by truncation.
// All but noise(), whose pixels have an order, may be called for parts of a picture; the corrections by
// statistics of the whole are made of tables (levels.h).
namespace pixvane::filters {

/// Grey by luma: trunc(0.7154 G + 0.2125 R + 0.0721 B), summed in this order.
void desaturate(ConstPixelBuffer source, PixelBuffer target);
/// With f = percent * 0.01, Y = min(255, trunc(0.0721 B + 0.2125 R + 0.7154 G)), base = trunc(Y (1 - f)):
/// c -> clamp(trunc(c f + base)).
void saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
/// With f = percent * 0.01: c -> clamp(trunc(c f) + trunc((1 - f) 127)).
void contrast(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
/// c -> clamp(c + d), each channel with its own addend of any size.
void brightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
                std::int32_t blue);
/// c -> min(255, trunc(c (percent * 0.01))); percents are not negative.
void lightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t redPercent,
               std::int32_t greenPercent, std::int32_t bluePercent);
/// With t = percent * 0.01, -1..1: R -> clamp(trunc(R (1 + t))), B -> clamp(trunc(B (1 - t))), G kept.
void temperature(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
/// Adds a random offset of up to `amount` to the channels: one for all three if `sameForAll` (two draws a
/// pixel), else one each for R, G and B (six draws a pixel), pixels in memory order. A draw r gives
/// trunc(r (amount * 3.051850947599719e-5)), so amount for the largest r; a second draw above 16383 turns the
/// sign. Parts of a picture give the same pixels if `random` jumped ahead by noise_draws() for each pixel
/// before them.
void noise(ConstPixelBuffer source, PixelBuffer target, bool sameForAll, std::int32_t amount,
           RandomGenerator& random);
/// c -> 255 - c.
void invert(ConstPixelBuffer source, PixelBuffer target);
/// (R + G + B) / 3 above `level` gives `above`, else `below`; both are written as they are.
void monochrome(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, Pixel above, Pixel below);
/// Tone by a colour: black to black, the colour's own mean to the colour, and on towards white. 0..255 each.
void hue(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
         std::int32_t blue);
/// Grey in `levels` (2..256) steps. Where the bands don't reach a mean of 255, such a pixel is copied, alpha
/// included.
void bw_levels(ConstPixelBuffer source, PixelBuffer target, std::int32_t levels);
/// i -> trunc(255 (i * 0.00392156862745098)^level), 0 -> 0; level is finite and at least 0.02.
void gamma(ConstPixelBuffer source, PixelBuffer target, double level);

}  // namespace pixvane::filters
