// Outlines of the shapes that a canvas draws.
// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "draw/path.h"

namespace pixvane {

struct DrawRect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

inline DrawPoint centre_of(PixelPoint p) { return {p.x + 0.5, p.y + 0.5}; }
/// The borders of the outermost pixels, and the lines through their centres.
DrawRect borders_of(PixelRect area);
DrawRect centres_of(PixelRect area);

// Each adds one figure to the path.
void add_polygon(Path& path, std::span<const PixelPoint> points, bool closed);
void add_rectangle(Path& path, DrawRect box);
void add_ellipse(Path& path, DrawRect box);
/// From the ray at `start` degrees on, clockwise for `sweep` degrees, |sweep| below 360; a
/// pie is closed over the centre. A ray that leaves the centre at an angle meets the ellipse at that angle.
void add_arc(Path& path, DrawRect box, double start, double sweep, bool isPie);
void add_bezier(Path& path, std::span<const PixelPoint> points);
/// A cardinal spline of tension 1/2: through each point runs the direction from the one before it to the
/// next, with control points a sixth of that distance away.
void add_spline(Path& path, std::span<const PixelPoint> points, bool closed);

/// What the outline spans, curves taken exactly; false for an empty one and for numbers that are not finite.
bool find_extent(const Path& path, DrawRect& extent);

}  // namespace pixvane
