// Aliased strokes of one pixel: chains of single pixels.
// SPDX-License-Identifier: MIT
#pragma once

#include "draw/draw_scratch.h"
#include "draw/pen_shape.h"

namespace pixvane {

/// Fills scratch.touched with the pixels of `clip` that scratch.outline runs through, each once, sorted. A
/// line takes one pixel in each column or row, whichever it crosses more of, the one whose centre is nearest,
/// and is the same in both directions; of a curve the corners are left out, so that it has one pixel's width,
/// too.
void touch_thin(DrawScratch& scratch, PixelRect clip, const PenShape& pen);
/// The same for a solid ellipse inscribed in `bounds`: its quarters mirror each other to the pixel.
void touch_thin_ellipse(DrawScratch& scratch, PixelRect clip, PixelRect bounds, const PenShape& pen);

}  // namespace pixvane
