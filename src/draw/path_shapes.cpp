// Outlines of the shapes that a canvas draws.
// SPDX-License-Identifier: MIT
#include "draw/path_shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pixvane {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

/// An elliptic arc between two parameters, in curves of at most a quarter; the path is at its start.
void curve_along(Path& path, DrawPoint centre, double rx, double ry, double from, double sweep) {
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (kTurn / 4) - 1e-9)));
    const double step = sweep / pieces;
    const double pull = 4.0 / 3 * std::tan(step / 4);
    for (int i = 0; i < pieces; ++i) {
        const double a = from + i * step;
        const double b = from + (i + 1) * step;
        const double ca = std::cos(a), sa = std::sin(a), cb = std::cos(b), sb = std::sin(b);
        path.curve_to({centre.x + rx * (ca - pull * sa), centre.y + ry * (sa + pull * ca)},
                      {centre.x + rx * (cb + pull * sb), centre.y + ry * (sb - pull * cb)},
                      {centre.x + rx * cb, centre.y + ry * sb});
    }
}

/// One coordinate of a cubic curve at t.
double cubic(double a, double b, double c, double d, double t) {
    const double s = 1 - t;
    return s * s * (s * a + 3 * t * b) + t * t * (3 * s * c + t * d);
}

/// Widens lowest..highest by the places where the curve turns; its ends are the caller's.
void span_cubic(double a, double b, double c, double d, double& lowest, double& highest) {
    const auto include = [&](double t) {
        if (!(t > 0 && t < 1)) return;
        const double value = cubic(a, b, c, d, t);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    };
    // The derivative is p t^2 + 2 q t + r, but for a factor.
    const double p = d - a + 3 * (b - c);
    const double q = a - 2 * b + c;
    const double r = b - a;
    const double root = q * q - p * r;
    if (root >= 0) {
        // Of the two usual formulas each time the one that doesn't cancel.
        const double sum = -q - std::copysign(std::sqrt(root), q);
        if (p != 0) include(sum / p);
        if (sum != 0) include(r / sum);
    }
}

}  // namespace

DrawRect borders_of(PixelRect area) {
    return {1.0 * area.x, 1.0 * area.y, 1.0 * area.x + area.width, 1.0 * area.y + area.height};
}

DrawRect centres_of(PixelRect area) {
    const DrawRect all = borders_of(area);
    return {all.left + 0.5, all.top + 0.5, all.right - 0.5, all.bottom - 0.5};
}

void add_polygon(Path& path, std::span<const PixelPoint> points, bool closed) {
    if (points.empty()) return;
    path.move_to(centre_of(points[0]));
    for (const PixelPoint p : points.subspan(1)) path.line_to(centre_of(p));
    if (closed) path.close();
}

void add_rectangle(Path& path, DrawRect box) {
    path.move_to({box.left, box.top});
    path.line_to({box.right, box.top});
    path.line_to({box.right, box.bottom});
    path.line_to({box.left, box.bottom});
    path.close();
}

void add_ellipse(Path& path, DrawRect box) {
    const DrawPoint centre{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    const double rx = (box.right - box.left) / 2;
    const double ry = (box.bottom - box.top) / 2;
    // Written out, since sines of quarter turns are not quite whole: both halves shall mirror each other.
    const double kx = rx * (4.0 / 3) * (std::numbers::sqrt2 - 1);
    const double ky = ry * (4.0 / 3) * (std::numbers::sqrt2 - 1);
    path.move_to({box.right, centre.y});
    path.curve_to({box.right, centre.y + ky}, {centre.x + kx, box.bottom}, {centre.x, box.bottom});
    path.curve_to({centre.x - kx, box.bottom}, {box.left, centre.y + ky}, {box.left, centre.y});
    path.curve_to({box.left, centre.y - ky}, {centre.x - kx, box.top}, {centre.x, box.top});
    path.curve_to({centre.x + kx, box.top}, {box.right, centre.y - ky}, {box.right, centre.y});
    path.close();
}

void add_arc(Path& path, DrawRect box, double start, double sweep, bool isPie) {
    const DrawPoint centre{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    const double rx = (box.right - box.left) / 2;
    const double ry = (box.bottom - box.top) / 2;
    // The parameter at which the ellipse meets a ray lies in the ray's quarter, so whole turns stay whole.
    const auto parameter = [&](double degrees) {
        const double angle = std::fmod(degrees, 360) * (kTurn / 360);
        const double turned = std::atan2(rx * std::sin(angle), ry * std::cos(angle));
        return turned + kTurn * std::round((angle - turned) / kTurn);
    };
    const double from = parameter(start);
    double along = parameter(std::fmod(start, 360) + sweep) - from;
    if (sweep > 0 && along < 0) along += kTurn;
    if (sweep < 0 && along > 0) along -= kTurn;
    const DrawPoint first{centre.x + rx * std::cos(from), centre.y + ry * std::sin(from)};
    if (isPie) {
        path.move_to(centre);
        path.line_to(first);
    } else {
        path.move_to(first);
    }
    curve_along(path, centre, rx, ry, from, along);
    if (isPie) path.close();
}

void add_bezier(Path& path, std::span<const PixelPoint> points) {
    if (points.empty()) return;
    path.move_to(centre_of(points[0]));
    for (std::size_t i = 1; i + 2 < points.size(); i += 3)
        path.curve_to(centre_of(points[i]), centre_of(points[i + 1]), centre_of(points[i + 2]));
}

void add_spline(Path& path, std::span<const PixelPoint> points, bool closed) {
    if (points.empty()) return;
    const std::size_t count = points.size();
    closed = closed && count > 2;
    const auto at = [&](std::size_t i) { return centre_of(points[i % count]); };
    /// A sixth of the way between the neighbours of a point.
    const auto pull = [&](std::size_t i) {
        const DrawPoint before = at(i > 0 ? i - 1 : closed ? count - 1 : 0);
        const DrawPoint after = at(closed || i + 1 < count ? i + 1 : i);
        return DrawPoint{(after.x - before.x) / 6, (after.y - before.y) / 6};
    };
    path.move_to(at(0));
    for (std::size_t i = 0; i < (closed ? count : count - 1); ++i) {
        const DrawPoint from = at(i), to = at(i + 1);
        const DrawPoint leaving = pull(i), arriving = pull((i + 1) % count);
        path.curve_to({from.x + leaving.x, from.y + leaving.y}, {to.x - arriving.x, to.y - arriving.y}, to);
    }
    if (closed) path.close();
}

bool find_extent(const Path& path, DrawRect& extent) {
    if (path.points().empty()) return false;
    const DrawPoint* p = path.points().data();
    DrawRect all{p->x, p->y, p->x, p->y};
    DrawPoint last = *p;
    for (const DrawPoint point : path.points())
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) return false;
    const auto widen = [&](DrawPoint point) {
        all.left = std::min(all.left, point.x);
        all.right = std::max(all.right, point.x);
        all.top = std::min(all.top, point.y);
        all.bottom = std::max(all.bottom, point.y);
    };
    for (const Path::Verb verb : path.verbs()) {
        if (verb == Path::Verb::Close) continue;
        if (verb == Path::Verb::Curve) {
            span_cubic(last.x, p[0].x, p[1].x, p[2].x, all.left, all.right);
            span_cubic(last.y, p[0].y, p[1].y, p[2].y, all.top, all.bottom);
            p += 2;
        }
        last = *p++;
        widen(last);
    }
    extent = all;
    return true;
}

}  // namespace pixvane
