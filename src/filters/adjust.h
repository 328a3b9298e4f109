// Colour adjustments: every output pixel depends on the same input pixel, and at most on statistics of the
// whole picture.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "core/pixel_buffer.h"
#include "core/random.h"

// Source and target have the same size; they may be the same memory. Every function writes alpha 255 into
// each pixel, and none reads it, unless it says otherwise. A double becomes an integer by truncation.
namespace pixvane::filters {

/// One output value for each input value of a channel.
using ChannelTable = std::array<std::uint8_t, 256>;

/// Tables for the channels of a pixel.
struct ChannelTables {
    ChannelTable red;
    ChannelTable green;
    ChannelTable blue;
};

/// Each channel through its own table.
void apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables);

/// Grey by luma: trunc(0.7154 G + 0.2125 R + 0.0721 B), summed in this order.
void desaturate(ConstPixelBuffer source, PixelBuffer target);
/// With f = percent / 100, Y = min(255, trunc(0.0721 B + 0.2125 R + 0.7154 G)), base = trunc(Y (1 - f)):
/// c -> clamp(trunc(c f + base)).
void saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
/// Stretches each channel on its own to 5..250; a channel of one value stays as it is.
void autocolor(ConstPixelBuffer source, PixelBuffer target);
/// With f = percent / 100: c -> clamp(trunc(c f) + trunc((1 - f) 127)).
void contrast(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
/// c -> clamp(c + d), each channel with its own addend of any size.
void brightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
                std::int32_t blue);
/// c -> min(255, trunc(c percent / 100)); percents are not negative.
void lightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t redPercent,
               std::int32_t greenPercent, std::int32_t bluePercent);
/// With t = percent / 100, -1..1: R -> clamp(trunc(R (1 + t))), B -> clamp(trunc(B (1 - t))), G kept.
void temperature(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
/// Adds a random offset of up to `amount` to the channels: one for all three if `sameForAll` (two draws a
/// pixel), else one each for R, G and B (six draws a pixel), pixels in memory order. A draw r gives
/// trunc(r amount / 32767), a second one above 16383 turns the sign.
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
/// Levels of each channel from its histogram, cutting 5 percent of a third of the pixels at each end. The
/// upper end of every channel is at least the red low end plus 1.
void autolevels(ConstPixelBuffer source, PixelBuffer target);
/// Common levels from one histogram over all three channels.
void autocontrast(ConstPixelBuffer source, PixelBuffer target);
/// i -> trunc(255 (i * 0.00392156862745098)^level), 0 -> 0; level is finite and at least 0.02.
void gamma(ConstPixelBuffer source, PixelBuffer target, double level);

}  // namespace pixvane::filters
