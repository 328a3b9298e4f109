// Curves turned into lines.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "draw/path_shapes.h"

namespace pixvane {

/// How far a line may stray from its curve, in pixels.
constexpr double kFlatness = 1.0 / 16;

struct Cubic {
    DrawPoint a, b, c, d;

    /// Nothing of the curve lies in the rectangle, since all its points lie on one side of it.
    bool is_beside(const DrawRect& r) const {
        return std::max({a.x, b.x, c.x, d.x}) < r.left || std::min({a.x, b.x, c.x, d.x}) > r.right ||
               std::max({a.y, b.y, c.y, d.y}) < r.top || std::min({a.y, b.y, c.y, d.y}) > r.bottom;
    }
    /// How far the curve strays from the line between its ends, at most.
    double bulge() const {
        const double x = std::max(std::abs(a.x - 2 * b.x + c.x), std::abs(b.x - 2 * c.x + d.x));
        const double y = std::max(std::abs(a.y - 2 * b.y + c.y), std::abs(b.y - 2 * c.y + d.y));
        return (x + y) * 0.75;
    }
    /// No shorter than the curve, and no longer than its hull by more than the root of 2.
    double room() const {
        return std::abs(b.x - a.x) + std::abs(b.y - a.y) + std::abs(c.x - b.x) + std::abs(c.y - b.y) +
               std::abs(d.x - c.x) + std::abs(d.y - c.y);
    }
    /// The halves before and after the middle.
    void split(Cubic& before, Cubic& after) const {
        const auto middle = [](DrawPoint p, DrawPoint q) {
            return DrawPoint{(p.x + q.x) / 2, (p.y + q.y) / 2};
        };
        const DrawPoint ab = middle(a, b), bc = middle(b, c), cd = middle(c, d);
        const DrawPoint abc = middle(ab, bc), bcd = middle(bc, cd);
        const DrawPoint centre = middle(abc, bcd);
        before = {a, ab, abc, centre};
        after = {centre, bcd, cd, d};
    }
};

/// What becomes of a part of a curve that can't be seen: one line, or lines as long as the curve, for dashes.
/// A part of more than a million pixels is one line in any case.
enum class Unseen { Dropped, Measured };

/// Calls `point(p)` for the ends of the pieces into which the curve is halved until `isFine(piece)`, or,
/// beside the guard, as `unseen` says.
template <class IsFine, class Point>
void flatten(const Cubic& curve, const DrawRect& guard, Unseen unseen, IsFine isFine, Point point,
             int depth = 0) {
    constexpr int kMaxDepth = 40;  // 2^32 pixels down to less than one
    const auto isDone = [&] {
        if (!curve.is_beside(guard)) return isFine(curve);
        return unseen == Unseen::Dropped || curve.bulge() < kFlatness || curve.room() > 1e6;
    };
    if (depth == kMaxDepth || isDone()) {
        point(curve.d);
        return;
    }
    Cubic before, after;
    curve.split(before, after);
    flatten(before, guard, unseen, isFine, point, depth + 1);
    flatten(after, guard, unseen, isFine, point, depth + 1);
}

}  // namespace pixvane
