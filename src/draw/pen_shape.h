// The measures of a pen's stroke.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "draw/draw_settings.h"

namespace pixvane {

/// A pen of less than one pixel, or whose width is no number, draws one pixel; one wider than the widest
/// picture draws as that. The lengths of dashes are multiples of the width that themselves grow with the
/// width.
struct PenShape {
    double width = 1;
    std::array<double, 6> dashes{};  ///< pixels, on and off in turn
    std::size_t dashCount = 0;       ///< 0: a solid line
    bool isVisible = false;

    explicit PenShape(const PenSettings& pen) {
        constexpr std::array<std::array<double, 6>, 5> kDashes = {
            {{}, {4, 1}, {2, 1}, {4, 1, 2, 1}, {4, 1, 2, 1, 2, 1}}};
        if (pen.style < 0 || pen.style >= static_cast<std::int32_t>(kDashes.size())) return;
        isVisible = alpha_of(pen.color) != 0;
        if (pen.width > 1) width = std::fmin(pen.width, kMaxSide);
        for (const double length : kDashes[static_cast<std::size_t>(pen.style)])
            if (length > 0) dashes[dashCount++] = length * width * width;
    }

    bool is_solid() const { return dashCount == 0; }
    /// Whether an aliased stroke is a chain of single pixels.
    bool is_thin() const { return width < 1.5; }
};

/// Where one is in the dashes, a distance behind the start of the line.
class DashPlace {
public:
    DashPlace(const PenShape& pen, double distance) : pen_(pen) {
        if (pen.is_solid()) return;
        double period = 0;
        for (std::size_t i = 0; i < pen.dashCount; ++i) period += pen.dashes[i];
        double behind = std::fmod(distance, period);
        while (index_ + 1 < pen.dashCount && behind >= pen.dashes[index_]) behind -= pen.dashes[index_++];
        left_ = pen.dashes[index_] - behind;
    }
    bool is_on() const { return index_ % 2 == 0; }
    /// Pixels to the end of this dash or gap.
    double left() const { return left_; }
    /// To the start of the next one.
    void advance() {
        index_ = index_ + 1 < pen_.dashCount ? index_ + 1 : 0;
        left_ = pen_.dashes[index_];
    }

private:
    const PenShape& pen_;
    std::size_t index_ = 0;
    double left_ = HUGE_VAL;
};

}  // namespace pixvane
