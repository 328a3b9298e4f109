// Draws a picture scaled into a rectangle of another one; only what can be seen of it is computed.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/geometry.h"
#include "core/pixel_buffer.h"
#include "core/scaling/scale.h"

namespace pixvane {

/// Scales the whole of `picture` into `area` of the target (core/scaling/scale.h) and lays it over `ground`,
/// in parallel bands. What lies outside of the target costs nothing. `scaling` is made for it, in the memory
/// that it has: whoever keeps it draws without allocation. `coarse`: below half size weights are rounded to 8
/// bits, which is faster, and right to about a level. The memory must be different.
void draw_scaled(PixelBuffer target, ConstPixelBuffer picture, PixelRect area, Ground ground,
                 Scaling& scaling, bool coarse = false);

}  // namespace pixvane
