// Draws a picture scaled and rotated about its centre.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/bitmap.h"
#include "core/pixel_buffer.h"
#include "core/scaling/scale.h"
#include "draw/path.h"

namespace pixvane {

/// What it needs for a moment, kept for the next time.
struct RotationScratch {
    std::shared_ptr<Bitmap> reduced;
    Scaling scaling;
};

/// Lays the picture, `scale` times as large and turned clockwise by `degrees`, over the target, its centre at
/// `center`; in parallel bands, and only what can be seen. Below half size the picture is first scaled as a
/// whole (core/scaling/scale.h). A pixel whose centre falls on (u, v) of the picture, in units of 1/256
/// pixel, is made of the four next to it with bilinear weights, colours weighed by alpha, and each quotient
/// rounded once, halves up; what is beyond the edges is transparent, so edges are smooth. Nothing is drawn by
/// a scale that is not above 0, or by numbers that are not finite.
void draw_rotated(PixelBuffer target, ConstPixelBuffer picture, DrawPoint center, double scale,
                  double degrees, RotationScratch& scratch);

}  // namespace pixvane
