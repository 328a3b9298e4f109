// The modes of the mouse: one row for each, with its tool and what is particular about it.
// SPDX-License-Identifier: MIT
#include "view/tool_modes.h"

#include "view/cursors.h"

namespace pixvane {
namespace {

template <class Tool>
std::unique_ptr<MouseTool> make() {
    return std::make_unique<Tool>();
}

constexpr std::int32_t kTick = 50;

constexpr ToolMode kIdleMode = {.mode = kNoTool, .make = make<MouseTool>};

constexpr ToolMode kModes[] = {
    {.mode = 1, .make = make<MouseTool>},
    {.mode = 25, .make = make<MouseTool>},
    {.mode = 2, .make = make<MouseTool>, .takesRightButton = true},
    {.mode = 4, .make = make<MouseTool>, .takesRightButton = true},
    {.mode = 3, .cursor = kRingCursor, .make = make<MouseTool>},
    {.mode = 6, .make = make<MouseTool>},
    {.mode = 13, .make = make<MouseTool>, .takesRightButton = true},
    {.mode = 17, .make = make<MouseTool>},
    {.mode = 18, .make = make<MouseTool>, .tickMilliseconds = kTick},
    {.mode = 19, .make = make<MouseTool>},
    {.mode = 23, .make = make<MouseTool>},
    {.mode = 5, .make = make<MouseTool>, .takesRightButton = true},
    {.mode = 8, .make = make<MouseTool>},
    {.mode = 9, .make = make<MouseTool>},
    {.mode = 10, .make = make<MouseTool>, .takesRightButton = true},
    {.mode = 11, .make = make<MouseTool>},
    {.mode = 24, .make = make<MouseTool>},
    {.mode = 12, .cursor = kCrossCursor, .make = make<MouseTool>, .drawsAtPointer = true},
    {.mode = 21, .make = make<MouseTool>},
    {.mode = 14, .make = make<MouseTool>},
    {.mode = 16, .make = make<MouseTool>},
    {.mode = 15, .make = make<MouseTool>, .drawsAtPointer = true},
    {.mode = 7, .make = make<MouseTool>, .tickMilliseconds = kTick},
    {.mode = 20, .make = make<MouseTool>, .hidesOverview = true},
    {.mode = 22, .cursor = kBucketCursor, .make = make<MouseTool>},
    {.mode = 26, .make = make<MouseTool>, .comesFirst = true},
};

}  // namespace

std::span<const ToolMode> tool_modes() { return kModes; }

ToolBox::ToolBox(std::span<const ToolMode> modes) : modes_(modes) {
    entries_[kNoTool] = {&kIdleMode, kIdleMode.make()};
    for (const ToolMode& row : modes_) entries_[static_cast<std::size_t>(row.mode)] = {&row, row.make()};
}

const ToolBox::Entry& ToolBox::entry(std::int32_t mode) const {
    const bool known = mode >= 0 && mode <= kLastMode && entries_[static_cast<std::size_t>(mode)].tool;
    return entries_[known ? static_cast<std::size_t>(mode) : kNoTool];
}

void ToolBox::reset() {
    for (const ToolMode& row : modes_) tool(row.mode).Reset();
}

}  // namespace pixvane
