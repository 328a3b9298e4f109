// Aliased strokes of one pixel: chains of single pixels.
// SPDX-License-Identifier: MIT
#include "draw/thin_stroke.h"

#include <optional>
#include <utility>

#include "draw/flatten.h"

namespace pixvane {
namespace {

/// Pixels are mirrored before they are touched: x becomes mirrorX - x.
struct Mirror {
    std::optional<double> x, y;
};

class ThinLine {
public:
    ThinLine(std::vector<std::uint64_t>& touched, PixelRect clip, const PenShape& pen, Mirror mirror = {})
        : touched_(touched), clip_(borders_of(clip)), seen_(clip_), pen_(pen), mirror_(mirror) {
        if (mirror.x) {
            seen_.left = *mirror.x + 1 - clip_.right;
            seen_.right = *mirror.x + 1 - clip_.left;
        }
        if (mirror.y) {
            seen_.top = *mirror.y + 1 - clip_.bottom;
            seen_.bottom = *mirror.y + 1 - clip_.top;
        }
    }

    void start(DrawPoint at) {
        at_ = at;
        last_ = beforeLast_ = pixel_of(at);
        behind_ = 0;
        lastIsCorner_ = false;
        touch(last_.x, last_.y, 0);
    }
    void line_to(DrawPoint to) {
        at_ = to;
        line(pixel_of(to));
        lastIsCorner_ = false;
    }
    void curve_to(DrawPoint b, DrawPoint c, DrawPoint d) {
        const DrawRect guard{seen_.left - 2, seen_.top - 2, seen_.right + 2, seen_.bottom + 2};
        flatten(
            {at_, b, c, d}, guard, pen_.is_solid() ? Unseen::Dropped : Unseen::Measured,
            [](const Cubic& piece) { return piece.room() < 1; }, [&](DrawPoint p) { next_of_curve(p); });
    }

private:
    /// The corner of the pixel stands for it.
    static DrawPoint pixel_of(DrawPoint p) { return {std::floor(p.x), std::floor(p.y)}; }

    bool touch(double x, double y, double distance) {
        if (mirror_.x) x = *mirror_.x - x;
        if (mirror_.y) y = *mirror_.y - y;
        if (x < clip_.left || y < clip_.top || x >= clip_.right || y >= clip_.bottom) return false;
        if (!DashPlace(pen_, distance).is_on()) return false;
        touched_.push_back(static_cast<std::uint64_t>(y) << 32 | static_cast<std::uint64_t>(x));
        return true;
    }

    static bool are_diagonal(DrawPoint p, DrawPoint q) {
        return std::abs(p.x - q.x) == 1 && std::abs(p.y - q.y) == 1;
    }

    void next_of_curve(DrawPoint at) {
        const double distance = behind_ + std::hypot(at.x - at_.x, at.y - at_.y);
        at_ = at;
        const DrawPoint to = pixel_of(at);
        if (std::max(std::abs(to.x - last_.x), std::abs(to.y - last_.y)) > 1) {
            line(to);  // where nothing is seen of the curve
            lastIsCorner_ = false;
            behind_ = distance;
            return;
        }
        behind_ = distance;
        if (to == last_) return;
        if (lastIsCorner_ && are_diagonal(beforeLast_, to)) {
            if (lastIsTouched_) touched_.pop_back();
        } else {
            beforeLast_ = last_;
        }
        last_ = to;
        lastIsTouched_ = touch(to.x, to.y, behind_);
        lastIsCorner_ = true;
    }

    void line(DrawPoint to) {
        DrawPoint from = std::exchange(last_, to);
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        const bool isSteep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
        if (isSteep) {
            std::swap(from.x, from.y);
            std::swap(to.x, to.y);
        }
        const bool isBackward = to.x < from.x;
        if (isBackward) std::swap(from, to);
        const double along = to.x - from.x;
        const double aside = to.y - from.y;
        const double first = isSteep ? seen_.top : seen_.left;
        const double last = (isSteep ? seen_.bottom : seen_.right) - 1;
        const double skipped = std::max(0.0, first - from.x);
        const double steps = std::min(along, last - from.x) - skipped;
        for (std::int32_t step = 0; step <= steps; ++step) {
            const double i = skipped + step;
            // Exact for all coordinates of a picture: a quotient of whole numbers, halves up.
            const double y = along == 0 ? from.y : from.y + std::floor((2 * aside * i + along) / (2 * along));
            const double distance = along == 0 ? 0 : (isBackward ? along - i : i) * (length / along);
            isSteep ? touch(y, from.x + i, behind_ + distance) : touch(from.x + i, y, behind_ + distance);
        }
        behind_ += length;
        beforeLast_ = last_;
    }

    std::vector<std::uint64_t>& touched_;
    DrawRect clip_;
    DrawRect seen_;  // the clip, mirrored
    const PenShape& pen_;
    Mirror mirror_;
    DrawPoint at_;
    DrawPoint last_, beforeLast_;  // pixels
    double behind_ = 0;            // length of the figure so far
    bool lastIsTouched_ = false;
    bool lastIsCorner_ = false;  // the last pixel may be left out
};

void sort_once(std::vector<std::uint64_t>& touched) {
    std::sort(touched.begin(), touched.end());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
}

}  // namespace

void touch_thin(DrawScratch& scratch, PixelRect clip, const PenShape& pen) {
    std::vector<std::uint64_t>& touched = scratch.touched;
    touched.clear();
    ThinLine line(touched, clip, pen);
    const DrawPoint* p = scratch.outline.points().data();
    DrawPoint start;
    for (const Path::Verb verb : scratch.outline.verbs()) {
        switch (verb) {
            case Path::Verb::Move:
                start = *p++;
                line.start(start);
                break;
            case Path::Verb::Line:
                line.line_to(*p++);
                break;
            case Path::Verb::Curve:
                line.curve_to(p[0], p[1], p[2]);
                p += 3;
                break;
            case Path::Verb::Close:
                line.line_to(start);
                break;
        }
    }
    sort_once(touched);
}

void touch_thin_ellipse(DrawScratch& scratch, PixelRect clip, PixelRect bounds, const PenShape& pen) {
    scratch.touched.clear();
    Path& quarter = scratch.outline;
    quarter.clear();
    add_ellipse(quarter, centres_of(bounds));
    const DrawPoint* p = quarter.points().data();
    const DrawRect borders = borders_of(bounds);
    const double sumX = borders.left + borders.right - 1, sumY = borders.top + borders.bottom - 1;
    for (const Mirror& mirror : {Mirror{}, {sumX, {}}, {{}, sumY}, {sumX, sumY}}) {
        ThinLine line(scratch.touched, clip, pen, mirror);
        line.start(p[0]);
        line.curve_to(p[1], p[2], p[3]);
    }
    sort_once(scratch.touched);
}

}  // namespace pixvane
