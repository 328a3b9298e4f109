// Ranks of the neighbourhood, scatter, focus and surfaces.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/pixel_buffer.h"
#include "core/random.h"
#include "filters/area/radius.h"

// Source and target have the same size and are different memory. A kernel with `first` and `last` writes
// these rows of the target and reads what it likes of the source, so a picture may be done in parts. The
// window of radius r around a pixel has n = 2 r + 1 pixels a side; beyond the picture its edge pixels repeat.
// What is drawn with an alpha below 255 is blended onto the source's pixel by source_over(); all else has
// alpha 255, unless it says otherwise. A double becomes an integer by truncation.
namespace pixvane::filters {

/// The least value of each channel in the window; radius 0..kMaxWindowRadius.
void minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last);
/// The largest.
void maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last);
/// The middle one of each channel's n n values in order.
void median(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
            std::int32_t last);

/// With k = 1.0 / (n n) and the mean m = sum * k of the window, in doubles: a channel whose own
/// e = |trunc(c - m)| over the sum D of the same of all window pixels is above 1.5 k becomes trunc(m), others
/// stay; they stay if D is 0. Radius 1..kMaxWindowRadius.
void anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                std::int32_t last);

/// Draws onto each pixel one from at most `reach` (1 at least) away, as a random offset says: two draws r a
/// pixel, x first, trunc(r ((2 reach + 1) 3.051850947599719e-5)) - reach each, which is reach + 1 now and
/// then for the largest r. Columns come one after the other, each from its top: `start` is the generator
/// before the first pixel of the whole picture.
void diffuse(ConstPixelBuffer source, PixelBuffer target, std::int32_t reach, const RandomGenerator& start,
             std::int32_t first, std::int32_t last);
/// How many numbers diffuse() draws for each pixel.
constexpr std::uint32_t kDiffuseDraws = 2;

/// What colours a tile.
enum class TileColor {
    Centre,  ///< its middle pixel, alpha included
    Mean,    ///< its pixels, of which the middle one counts twice
};
/// Draws square tiles of 2 `half` + 1 pixels, `half` 1 at least, from the top left corner on. A tile whose
/// middle lies outside is not drawn; of others, the mean repeats edge pixels.
void mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
            std::int32_t first, std::int32_t last);

/// A weave of strokes, black or white, of random length 2..31 and random alpha below `opacity` (1 at least):
/// first along each row, then down each column. Each takes three draws: length, alpha, colour. A stroke
/// covers its end pixel, on which the next one starts. An alpha from 256 on keeps its low 8 bits.
void textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity, RandomGenerator& random);

/// A point, in pixels of the picture, inside it or not, and the distances around it at which an effect starts
/// and, `transition` further on, is complete. A pixel's distance is trunc(sqrt(dx dx + dy dy)), in doubles.
struct Focus {
    std::int32_t radius;
    std::int32_t transition;
    std::int32_t x;
    std::int32_t y;
};

/// Keeps what is nearer than the radius, alpha included; from there on fades to the luma of saturate().
void focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
              std::int32_t last);

/// The weight of each pixel's own value in soft_focus() against 1 of each of its eight neighbours; 0 says
/// that the pixel is drawn unchanged. Radius and transition are 1 at least. `weights` has the picture's size.
void soft_focus_weights(PixelBuffer weights, const Focus& focus, std::int32_t first, std::int32_t last);
/// One pass, a weighted mean of 3 x 3 pixels. Without weights (data null) they are worked out as they are
/// needed. Tells whether any pixel changed.
bool soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights, const Focus& focus,
                std::int32_t first, std::int32_t last);

}  // namespace pixvane::filters
