// Draws lines, shapes, text and pictures on pixels; the view and the picture are drawn with the same one.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/pixel_buffer.h"
#include "draw/draw_settings.h"
#include "draw/path_shapes.h"
#include "draw/rasterizer.h"

namespace pixvane {

/// Whole-pixel coordinates name pixels: a line covers both end points, the frame of a rectangle covers its
/// outermost pixels, a filled rectangle or ellipse reaches to the borders of its area, and polygons run
/// through the centres of their points' pixels. A stroke, however often it crosses itself, is blended once.
/// Pixels are blended source-over on straight alpha (coverage.h); what lies outside the target is cut off.
/// Any number is safe: pen_shape.h and paint.h say what draws nothing. Nothing is allocated but where the
/// rasterizer's scratch has to grow.
class Canvas {
public:
    /// `smooth`: lines and shapes are antialiased; text always is. The rasterizer must outlive the canvas.
    Canvas(PixelBuffer target, Rasterizer& rasterizer, bool smooth)
        : target_(target), rasterizer_(rasterizer), smooth_(smooth) {}

    PixelBuffer target() const { return target_; }

    // Shapes. A pen without a style or a brush without one draws nothing.
    void line(const PenSettings& pen, PixelPoint from, PixelPoint to);
    void polyline(const PenSettings& pen, std::span<const PixelPoint> points);
    void polygon(const PenSettings& pen, std::span<const PixelPoint> points);
    void fill_polygon(const BrushSettings& brush, std::span<const PixelPoint> points);
    void rectangle(const PenSettings& pen, PixelRect area);
    void fill_rectangle(const BrushSettings& brush, PixelRect area);
    void ellipse(const PenSettings& pen, PixelRect bounds);
    void fill_ellipse(const BrushSettings& brush, PixelRect bounds);
    /// Between two rays from the centre of the ellipse in `bounds`: angles in degrees, clockwise from the
    /// positive x axis, `sweep` from the first to the second ray. 360 degrees and more are the whole ellipse.
    void arc(const PenSettings& pen, PixelRect bounds, double start, double sweep);
    void pie(const PenSettings& pen, PixelRect bounds, double start, double sweep);
    void fill_pie(const BrushSettings& brush, PixelRect bounds, double start, double sweep);
    /// Cubic Bezier curves: 3 n + 1 points; points beyond that are left out.
    void bezier(const PenSettings& pen, std::span<const PixelPoint> points);
    /// A cardinal spline through all points, tension 0.5; closed: back to the first one.
    void spline(const PenSettings& pen, std::span<const PixelPoint> points, bool closed);
    void fill_spline(const BrushSettings& brush, std::span<const PixelPoint> points);

    // Text in one colour, its top left corner at (x, y).
    void text(std::string_view text, const Font& font, std::int32_t x, std::int32_t y, Pixel color);
    TextSize measure(std::string_view text, const Font& font) { return rasterizer_.measure(text, font); }

    // Pictures.
    /// Scaled into `area`: bilinear, averaged below half size.
    void picture(ConstPixelBuffer picture, PixelRect area);
    /// Scaled by `scale` and rotated clockwise by `degrees` about its centre, which lies at `center`.
    void rotated_picture(ConstPixelBuffer picture, DrawPoint center, double scale, double degrees);

private:
    /// The path that the next shape is to be put in.
    Path& begin();
    bool add_part(PixelRect bounds, const DrawRect& box, double start, double sweep, bool isPie);
    // What is in the path.
    void stroke(const PenSettings& pen);
    void fill(const BrushSettings& brush);
    void blend_touched(Pixel color);
    void blend_solid(PixelRect area, Pixel color);

    PixelBuffer target_;
    Rasterizer& rasterizer_;
    bool smooth_;
};

}  // namespace pixvane
