// Lines and shapes of a canvas.
// SPDX-License-Identifier: MIT
#include "draw/canvas.h"

#include <cmath>
#include <limits>

#include "draw/coverage.h"
#include "draw/path_pieces.h"
#include "draw/path_shapes.h"
#include "draw/thin_stroke.h"
#include "draw/tiles.h"

namespace pixvane {
namespace {

/// As far as mitres and square ends of a pen reach, and a pixel for rounding.
double reach_of(const PenShape& pen) { return 5 * pen.width + 2; }

DrawRect grown(DrawRect rect, double by) {
    return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

/// The pixels that the rectangle touches.
PixelRect pixels_of(const DrawRect& rect) {
    const auto whole = [](double value) {
        // Half of the range, so that widths fit as well.
        constexpr double kEnd = std::numeric_limits<std::int32_t>::max() / 2.0;
        return static_cast<std::int32_t>(std::clamp(value, -kEnd, kEnd));
    };
    const std::int32_t x = whole(std::floor(rect.left));
    const std::int32_t y = whole(std::floor(rect.top));
    return {x, y, whole(std::ceil(rect.right)) - x, whole(std::ceil(rect.bottom)) - y};
}

}  // namespace

Path& Canvas::begin() {
    rasterizer_.scratch.outline.clear();
    return rasterizer_.scratch.outline;
}

void Canvas::stroke(const PenSettings& pen) {
    DrawScratch& scratch = rasterizer_.scratch;
    const PenShape shape(pen);
    DrawRect extent;
    if (!shape.isVisible || !find_extent(scratch.outline, extent)) return;
    const PixelRect all{0, 0, target_.width, target_.height};
    if (!smooth_ && shape.is_thin()) {
        touch_thin(scratch, all, shape);
        blend_touched(pen.color);
        return;
    }
    const double reach = reach_of(shape);
    for_each_tile(intersection(pixels_of(grown(extent, reach)), all), [&](PixelRect tile) {
        cut_stroke(scratch, grown(borders_of(tile), reach), shape);
        const Mask mask = rasterizer_.stroke(scratch.pieces, shape.width, smooth_, tile);
        blend_mask(target_, mask, Paint(pen.color), scratch);
    });
}

void Canvas::fill(const BrushSettings& brush) {
    DrawScratch& scratch = rasterizer_.scratch;
    DrawRect extent;
    if (!find_extent(scratch.outline, extent)) return;
    const PixelRect bounds = pixels_of(extent);
    const Paint paint(brush, bounds);
    if (paint.is_nothing()) return;
    for_each_tile(intersection(bounds, {0, 0, target_.width, target_.height}), [&](PixelRect tile) {
        cut_fill(scratch, grown(borders_of(tile), 2));
        blend_mask(target_, rasterizer_.fill(scratch.pieces, smooth_, tile), paint, scratch);
    });
}

void Canvas::blend_touched(Pixel color) {
    for (const std::uint64_t at : rasterizer_.scratch.touched) {
        Pixel& pixel = target_.row(static_cast<std::int32_t>(at >> 32))[at & 0xFFFFFFFF];
        pixel = source_over(pixel, color);
    }
}

void Canvas::blend_solid(PixelRect area, Pixel color) {
    blend_area(target_, area, Paint(color), rasterizer_.scratch);
}

void Canvas::line(const PenSettings& pen, PixelPoint from, PixelPoint to) {
    const PixelPoint points[] = {from, to};
    add_polygon(begin(), points, false);
    stroke(pen);
}

void Canvas::polyline(const PenSettings& pen, std::span<const PixelPoint> points) {
    add_polygon(begin(), points, false);
    stroke(pen);
}

void Canvas::polygon(const PenSettings& pen, std::span<const PixelPoint> points) {
    add_polygon(begin(), points, true);
    stroke(pen);
}

void Canvas::fill_polygon(const BrushSettings& brush, std::span<const PixelPoint> points) {
    add_polygon(begin(), points, true);
    fill(brush);
}

void Canvas::rectangle(const PenSettings& pen, PixelRect area) {
    const PenShape shape(pen);
    if (area.width <= 0 || area.height <= 0 || !shape.isVisible) return;
    if (!shape.is_solid() || (smooth_ && shape.width != std::floor(shape.width))) {
        add_rectangle(begin(), centres_of(area));
        stroke(pen);
        return;
    }
    // Bands as wide as the pen around the outermost pixels; of an even width the larger part lies outside.
    const auto width = static_cast<std::int64_t>(std::lround(shape.width));
    const std::int64_t left = area.x - width / 2, right = std::int64_t{area.x} + area.width + width / 2;
    const std::int64_t top = area.y - width / 2, bottom = std::int64_t{area.y} + area.height + width / 2;
    const auto band = [&](std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2) {
        x1 = std::clamp<std::int64_t>(x1, 0, target_.width);
        x2 = std::clamp<std::int64_t>(x2, 0, target_.width);
        y1 = std::clamp<std::int64_t>(y1, 0, target_.height);
        y2 = std::clamp<std::int64_t>(y2, 0, target_.height);
        blend_solid({static_cast<std::int32_t>(x1), static_cast<std::int32_t>(y1),
                     static_cast<std::int32_t>(x2 - x1), static_cast<std::int32_t>(y2 - y1)},
                    pen.color);
    };
    const std::int64_t innerTop = std::min(top + width, bottom);
    const std::int64_t innerBottom = std::max(bottom - width, innerTop);
    band(left, top, right, innerTop);
    band(left, innerBottom, right, bottom);
    band(left, innerTop, std::min(left + width, right), innerBottom);
    band(std::max(right - width, std::min(left + width, right)), innerTop, right, innerBottom);
}

void Canvas::fill_rectangle(const BrushSettings& brush, PixelRect area) {
    blend_area(target_, area, Paint(brush, area), rasterizer_.scratch);
}

void Canvas::ellipse(const PenSettings& pen, PixelRect bounds) {
    if (bounds.width <= 0 || bounds.height <= 0) return;
    const PenShape shape(pen);
    if (!smooth_ && shape.is_thin() && shape.is_solid() && shape.isVisible) {
        touch_thin_ellipse(rasterizer_.scratch, {0, 0, target_.width, target_.height}, bounds, shape);
        blend_touched(pen.color);
        return;
    }
    add_ellipse(begin(), centres_of(bounds));
    stroke(pen);
}

void Canvas::fill_ellipse(const BrushSettings& brush, PixelRect bounds) {
    if (bounds.width <= 0 || bounds.height <= 0) return;
    add_ellipse(begin(), borders_of(bounds));
    fill(brush);
}

bool Canvas::add_part(PixelRect bounds, const DrawRect& box, double start, double sweep, bool isPie) {
    if (bounds.width <= 0 || bounds.height <= 0) return false;
    if (!std::isfinite(start) || std::isnan(sweep)) return false;
    add_arc(begin(), box, start, sweep, isPie);
    return true;
}

void Canvas::arc(const PenSettings& pen, PixelRect bounds, double start, double sweep) {
    if (std::abs(sweep) >= 360) return ellipse(pen, bounds);
    if (add_part(bounds, centres_of(bounds), start, sweep, false)) stroke(pen);
}

void Canvas::pie(const PenSettings& pen, PixelRect bounds, double start, double sweep) {
    if (std::abs(sweep) >= 360) return ellipse(pen, bounds);
    if (add_part(bounds, centres_of(bounds), start, sweep, true)) stroke(pen);
}

void Canvas::fill_pie(const BrushSettings& brush, PixelRect bounds, double start, double sweep) {
    if (std::abs(sweep) >= 360) return fill_ellipse(brush, bounds);
    if (add_part(bounds, borders_of(bounds), start, sweep, true)) fill(brush);
}

void Canvas::bezier(const PenSettings& pen, std::span<const PixelPoint> points) {
    add_bezier(begin(), points);
    stroke(pen);
}

void Canvas::spline(const PenSettings& pen, std::span<const PixelPoint> points, bool closed) {
    add_spline(begin(), points, closed);
    stroke(pen);
}

void Canvas::fill_spline(const BrushSettings& brush, std::span<const PixelPoint> points) {
    add_spline(begin(), points, true);
    fill(brush);
}

}  // namespace pixvane
