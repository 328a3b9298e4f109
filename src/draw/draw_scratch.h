// Memory that drawing needs for a moment, kept so that a repaint allocates nothing.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "core/pixel_buffer.h"
#include "core/scaling/scale.h"
#include "draw/path.h"
#include "draw/rotated_picture.h"

namespace pixvane {

/// Grows to the largest shape that was drawn. No member keeps its content from one shape to the next.
struct DrawScratch {
    Path outline;                        ///< as it was asked for
    Path pieces;                         ///< straight, cut to what can be seen
    std::vector<DrawPoint> points[2];    ///< of a polygon that is being cut
    std::vector<std::uint64_t> touched;  ///< pixels of a thin line, y in the high half
    std::vector<Pixel> row;              ///< what a brush paints in a row
    Scaling scaling;                     ///< of a picture
    RotationScratch rotation;
};

}  // namespace pixvane
