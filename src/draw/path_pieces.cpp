// Outlines cut to what can be seen, and into dashes.
// SPDX-License-Identifier: MIT
#include "draw/path_pieces.h"

#include "draw/flatten.h"

namespace pixvane {
namespace {

using Points = std::vector<DrawPoint>;

double length_of(DrawPoint a, DrawPoint b) { return std::hypot(b.x - a.x, b.y - a.y); }

DrawPoint between(DrawPoint a, DrawPoint b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

/// Calls `figure(points, closed)` for each figure of the path, its curves flattened; `points` may be changed.
template <class Figure>
void for_each_figure(const Path& path, const DrawRect& guard, Unseen unseen, Points& points, Figure figure) {
    const auto isFine = [](const Cubic& curve) { return curve.bulge() < kFlatness; };
    const DrawPoint* p = path.points().data();
    points.clear();
    const auto finish = [&](bool closed) {
        if (!points.empty()) figure(points, closed);
        points.clear();
    };
    for (const Path::Verb verb : path.verbs()) {
        switch (verb) {
            case Path::Verb::Move:
                finish(false);
                [[fallthrough]];
            case Path::Verb::Line:
                points.push_back(*p++);
                break;
            case Path::Verb::Curve:
                if (points.empty()) points.push_back(p[0]);
                flatten({points.back(), p[0], p[1], p[2]}, guard, unseen, isFine,
                        [&](DrawPoint end) { points.push_back(end); });
                p += 3;
                break;
            case Path::Verb::Close:
                finish(true);
                break;
        }
    }
    finish(false);
}

/// Keeps of a polygon what is on the inner side of a line, where `depth` is not negative.
template <class Depth>
void cut_polygon(const Points& from, Points& to, Depth depth) {
    to.clear();
    for (std::size_t i = 0; i < from.size(); ++i) {
        const DrawPoint a = from[i];
        const DrawPoint b = from[i + 1 < from.size() ? i + 1 : 0];
        const double da = depth(a), db = depth(b);
        if (da >= 0) to.push_back(a);
        if ((da >= 0) != (db >= 0)) to.push_back(between(a, b, da / (da - db)));
    }
}

/// The part t[0]..t[1] of the line from a to b that lies in the rectangle, or false.
bool cut_line(DrawPoint a, DrawPoint b, const DrawRect& r, double (&t)[2]) {
    t[0] = 0;
    t[1] = 1;
    const double steps[] = {a.x - b.x, b.x - a.x, a.y - b.y, b.y - a.y};
    const double rooms[] = {a.x - r.left, r.right - a.x, a.y - r.top, r.bottom - a.y};
    for (int side = 0; side < 4; ++side) {
        if (steps[side] == 0 && rooms[side] < 0) return false;
        if (steps[side] < 0) t[0] = std::max(t[0], rooms[side] / steps[side]);
        if (steps[side] > 0) t[1] = std::min(t[1], rooms[side] / steps[side]);
    }
    return t[0] <= t[1];
}

/// Draws the visible dashes of a line that is handed over point by point.
class DashedLine {
public:
    DashedLine(Path& path, const DrawRect& guard, const PenShape& pen)
        : path_(path), guard_(guard), pen_(pen) {}

    void piece(DrawPoint a, DrawPoint b) {
        const double length = length_of(a, b);
        double t[2];
        if (!cut_line(a, b, guard_, t)) {
            isDown_ = false;
        } else {
            if (t[0] > 0) isDown_ = false;
            visible(a, b, length, t[0] * length, t[1] * length);
            if (t[1] < 1) isDown_ = false;
        }
        behind_ += length;
    }
    bool is_down() const { return isDown_; }
    void line_to(DrawPoint p) { path_.line_to(p); }

private:
    void visible(DrawPoint a, DrawPoint b, double length, double from, double to) {
        DashPlace place(pen_, behind_ + from);
        while (true) {
            const double end = std::min(to, from + place.left());
            if (!place.is_on()) {
                isDown_ = false;
            } else {
                if (!isDown_) path_.move_to(between(a, b, from / length));
                path_.line_to(end == length ? b : between(a, b, end / length));
                isDown_ = true;
            }
            if (end >= to) return;
            from = end;
            place.advance();
        }
    }

    Path& path_;
    const DrawRect& guard_;
    const PenShape& pen_;
    double behind_ = 0;    // length of the line so far
    bool isDown_ = false;  // the path ends here, in a dash
};

void lengthen_ends(Points& points, double by) {
    if (points.size() == 1) {
        points.push_back({points[0].x + by, points[0].y});
        points[0].x -= by;
        return;
    }
    const auto away = [by](DrawPoint& end, DrawPoint from) {
        end = between(from, end, 1 + by / length_of(from, end));
    };
    const DrawPoint second = points[1];
    away(points.back(), points[points.size() - 2]);
    away(points[0], second);
}

bool is_inside(const Points& points, const DrawRect& guard) {
    return std::all_of(points.begin(), points.end(), [&](DrawPoint p) {
        return p.x >= guard.left && p.x <= guard.right && p.y >= guard.top && p.y <= guard.bottom;
    });
}

void stroke_figure(Points& points, bool closed, const DrawRect& guard, const PenShape& pen, Path& pieces) {
    points.erase(std::unique(points.begin(), points.end()), points.end());
    while (closed && points.size() > 1 && points.front() == points.back()) points.pop_back();
    // There and back again, or a point, is no more than a line.
    closed = closed && points.size() > 2;
    if (!closed) lengthen_ends(points, pen.width / 2);
    if (pen.is_solid() && is_inside(points, guard)) {
        pieces.move_to(points[0]);
        for (std::size_t i = 1; i < points.size(); ++i) pieces.line_to(points[i]);
        if (closed) pieces.close();
        return;
    }
    DashedLine line(pieces, guard, pen);
    for (std::size_t i = 1; i < points.size(); ++i) line.piece(points[i - 1], points[i]);
    if (!closed) return;
    line.piece(points.back(), points[0]);
    // A bit of the first piece once more joins the end to the start; a line starts with a dash.
    if (line.is_down()) {
        const double length = length_of(points[0], points[1]);
        line.line_to(between(points[0], points[1], std::min(1.0, pen.width / 2 / length)));
    }
}

}  // namespace

void cut_fill(DrawScratch& scratch, const DrawRect& guard) {
    scratch.pieces.clear();
    for_each_figure(scratch.outline, guard, Unseen::Dropped, scratch.points[0], [&](Points& points, bool) {
        Points& other = scratch.points[1];
        if (!is_inside(points, guard)) {
            cut_polygon(points, other, [&](DrawPoint p) { return p.x - guard.left; });
            cut_polygon(other, points, [&](DrawPoint p) { return guard.right - p.x; });
            cut_polygon(points, other, [&](DrawPoint p) { return p.y - guard.top; });
            cut_polygon(other, points, [&](DrawPoint p) { return guard.bottom - p.y; });
        }
        if (points.empty()) return;
        scratch.pieces.move_to(points[0]);
        for (std::size_t i = 1; i < points.size(); ++i) scratch.pieces.line_to(points[i]);
        scratch.pieces.close();
    });
}

void cut_stroke(DrawScratch& scratch, const DrawRect& guard, const PenShape& pen) {
    scratch.pieces.clear();
    const Unseen unseen = pen.is_solid() ? Unseen::Dropped : Unseen::Measured;
    for_each_figure(scratch.outline, guard, unseen, scratch.points[0], [&](Points& points, bool closed) {
        stroke_figure(points, closed, guard, pen, scratch.pieces);
    });
}

}  // namespace pixvane
