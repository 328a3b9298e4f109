// Outlines cut to what can be seen, and into dashes.
// SPDX-License-Identifier: MIT
#pragma once

#include "draw/draw_scratch.h"
#include "draw/path_shapes.h"
#include "draw/pen_shape.h"

namespace pixvane {

// Whatever the numbers of scratch.outline, those of scratch.pieces are finite and stay within the guard but
// for a stroke's ends; its curves have become lines that stray from them by no more than 1/16 pixel. The work
// grows with what lies in the guard, not with what lies outside of it (of dashed curves: with its root).

/// What is to be filled of the outline: the same inside within the guard.
void cut_fill(DrawScratch& scratch, const DrawRect& guard);
/// What is to be stroked of the outline. The ends of open lines are lengthened by half the pen's width, a
/// line without a length becomes a level one, and dashes start at the lengthened end.
void cut_stroke(DrawScratch& scratch, const DrawRect& guard, const PenShape& pen);

}  // namespace pixvane
