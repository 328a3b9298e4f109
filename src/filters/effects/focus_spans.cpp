// Where an effect around a point starts and where it is complete, along a row.
// SPDX-License-Identifier: MIT
#include "filters/effects/focus_spans.h"

#include <algorithm>
#include <cmath>

#include "filters/effects/focus.h"

namespace pixvane::filters {
namespace {

struct Span {
    std::int32_t first, last;
};

/// The places of row y, 0..width - 1, that are nearer than `limit`. Distances grow away from the nearest one.
Span nearer_than(double limit, const Focus& focus, std::int32_t y, std::int32_t width) {
    const std::int32_t nearest = std::clamp(focus.x, 0, width - 1);
    const auto is_near = [&](std::int32_t x) { return distance(focus, x, y) < limit; };
    if (!is_near(nearest)) return {nearest, nearest};
    // Rounding makes this a guess, which is corrected by the distances themselves.
    const double dy = static_cast<double>(focus.y) - y;
    const double reach = std::sqrt(std::max(0.0, limit * limit - dy * dy));
    const auto place = [&](double x) {
        return static_cast<std::int32_t>(std::clamp(x, 0.0, static_cast<double>(width - 1)));
    };
    std::int32_t first = std::min(nearest, place(focus.x - reach));
    while (!is_near(first)) ++first;
    while (first > 0 && is_near(first - 1)) --first;
    std::int32_t last = std::max(nearest, place(focus.x + reach));
    while (!is_near(last)) --last;
    while (last + 1 < width && is_near(last + 1)) ++last;
    return {first, last + 1};
}

}  // namespace

FocusSpans focus_spans(const Focus& focus, std::int32_t y, std::int32_t width) {
    const Span inner = nearer_than(focus.radius, focus, y, width);
    const double complete = full_distance(focus);
    const Span outer = complete > focus.radius ? nearer_than(complete, focus, y, width) : inner;
    return {outer.first, inner.first, inner.last, outer.last};
}

}  // namespace pixvane::filters
