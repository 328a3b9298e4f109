// Whole-picture fills, copies and compositions.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/geometry.h"
#include "core/pixel_buffer.h"

namespace pixvane {

/// Source-over of one straight-alpha pixel: with alpha of the source s, of the destination d and of the
/// result a = s + d (1 - s), each channel is (s * source + d (1 - s) * destination) / a, rounded once, halves
/// up. Source alpha 0 keeps the destination, 255 replaces it.
Pixel source_over(Pixel destination, Pixel source);

/// Replaces every pixel, alpha included.
void fill(PixelBuffer target, Pixel value);
/// Replaces the pixels of `area` that lie in the target.
void fill_area(PixelBuffer target, PixelRect area, Pixel value);
/// Sizes must be equal, the memory different.
void copy(PixelBuffer target, ConstPixelBuffer source);
/// Draws `source` with its top left corner at (x, y), source-over, cut off at the target's edges.
void draw_over(PixelBuffer target, ConstPixelBuffer source, std::int32_t x, std::int32_t y);
/// `source` composited over an opaque colour; sizes must be equal.
void flatten(PixelBuffer target, ConstPixelBuffer source, Pixel background);
/// The clear of `target` to `background` and the drawing of `source` at (x, y) in one pass.
void place(PixelBuffer target, ConstPixelBuffer source, std::int32_t x, std::int32_t y, Pixel background);

}  // namespace pixvane
