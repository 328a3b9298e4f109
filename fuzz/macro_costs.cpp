// What a macro would cost to play, so that a fuzzer keeps to what is quick.
// SPDX-License-Identifier: MIT
#include "macro_costs.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "core/pixel_buffer.h"

namespace pixvane::fuzz {
namespace {

// Pixels times the reach of a step: about a second under the sanitizers, for one input.
constexpr double kBudget = 2e7;
// Beyond it, no window is made.
constexpr double kWidestReach = 512;

struct Size {
    std::int64_t width;
    std::int64_t height;
    double pixels() const { return static_cast<double>(width) * static_cast<double>(height); }
};

bool is(const ListedStep& step, std::string_view name) { return step.row->name == name; }

/// The picture's size after a step; one that it can't have is refused, and costs nothing.
Size size_after(Size size, const ListedStep& step, const std::vector<Value>& values, std::int64_t limit) {
    Size after = size;
    if (is(step, "ScaleImage")) {
        const double width = static_cast<double>(size.width) * values[0].d;
        const double height = static_cast<double>(size.height) * values[1].d;
        const bool isPlausible = width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide;
        if (isPlausible) after = {static_cast<std::int64_t>(width), static_cast<std::int64_t>(height)};
    } else if (is(step, "Resize")) {
        after = {values[0].i, values[1].i};
    } else if (is(step, "AddSimpleBorder") || is(step, "AddGradientBorder")) {
        const std::int64_t both = 2 * std::max<std::int64_t>(values[0].i, 0);
        after = {size.width + both, size.height + both};
    } else if (is(step, "RotateFlip")) {
        if (values[0].i % 2 != 0) std::swap(after.width, after.height);
    }
    const bool isAccepted = is_picture_size(after.width, after.height) &&
                            after.width * after.height * std::int64_t{sizeof(Pixel)} <= limit;
    return isAccepted ? after : size;
}

/// How many pixels a step looks at for each pixel of the picture, or how often it goes over it.
double reach(const ListedStep& step, const std::vector<Value>& values) {
    if (!step.row->edits) return 0;
    double widest = 1;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (step.row->step_fields()[i].field != Field::Int32) continue;
        widest = std::max(widest, std::min(std::abs(double{1} * values[i].i), kWidestReach));
    }
    if (is(step, "SoftFocus")) return 8 * std::max(1.0, double{1} * values[0].i);
    if (is(step, "AntiNoise") || is(step, "Median")) return widest * 4;
    return widest;
}

}  // namespace

MacroScript without_costly_steps(const MacroScript& script, std::int64_t width, std::int64_t height,
                                 std::int64_t limit) {
    MacroScript kept;
    StepListing listing;
    StepArguments arguments;
    Size size{width, height};
    double left = kBudget;
    for (const ListedStep& step : listing.steps(script)) {
        if (step.row != nullptr && step.isComplete) {
            listing.read(script, step, arguments);
            const Size after = size_after(size, step, arguments.values, limit);
            const double cost = std::max(size.pixels(), after.pixels()) * reach(step, arguments.values) +
                                static_cast<double>(step.size);
            if (cost > left) continue;
            left -= cost;
            size = after;
        }
        kept.append(step.code, script.arguments().subspan(step.offset, step.size));
    }
    return kept;
}

}  // namespace pixvane::fuzz
