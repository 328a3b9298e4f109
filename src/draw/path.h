// Points, rectangles and outlines of a picture or window.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

#include "core/geometry.h"

namespace pixvane {

/// In pixels from the top left corner of the top left pixel: the centre of the pixel (0, 0) is (0.5, 0.5).
struct DrawPoint {
    double x = 0;
    double y = 0;
    bool operator==(const DrawPoint&) const = default;
};

/// Keeps its memory when it is cleared, so that one path can be filled again and again without allocation.
class Path {
public:
    enum class Verb : std::uint8_t { Move, Line, Curve, Close };

    void clear() {
        verbs_.clear();
        points_.clear();
    }
    void move_to(DrawPoint p) { add(Verb::Move, {p}); }
    void line_to(DrawPoint p) { add(Verb::Line, {p}); }
    /// A cubic Bezier curve with two control points.
    void curve_to(DrawPoint c1, DrawPoint c2, DrawPoint p) { add(Verb::Curve, {c1, c2, p}); }
    void close() { verbs_.push_back(Verb::Close); }

    bool is_empty() const { return verbs_.empty(); }
    std::span<const Verb> verbs() const { return verbs_; }
    /// One for a move or line, three for a curve, none for a close.
    std::span<const DrawPoint> points() const { return points_; }

private:
    void add(Verb verb, std::initializer_list<DrawPoint> points) {
        verbs_.push_back(verb);
        points_.insert(points_.end(), points);
    }
    std::vector<Verb> verbs_;
    std::vector<DrawPoint> points_;
};

}  // namespace pixvane
