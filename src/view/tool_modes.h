// The modes of the mouse: one row for each, with its tool and what is particular about it.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "view/mouse_tool.h"

namespace pixvane {

constexpr std::int32_t kNoTool = 0;  // the mode in which a drag moves the picture
constexpr std::int32_t kLastMode = 26;

struct ToolMode {
    std::int32_t mode;
    std::int32_t cursor = 0;  ///< one of the control's own, or 0
    std::unique_ptr<MouseTool> (*make)();
    std::int32_t tickMilliseconds = 0;  ///< of timer 1 while the mode is set, or 0
    bool takesRightButton = false;      ///< the tool sees presses of the right button
    bool drawsAtPointer = false;        ///< what it draws follows the pointer: every move is shown
    bool comesFirst = false;     ///< the tool sees the left button before all else, even without a picture
    bool hidesOverview = false;  ///< the overview panel is neither drawn nor hit
};

/// Modes 1 to 26, in the order in which their tools are reset.
std::span<const ToolMode> tool_modes();

/// The tools of one control. Mode 0 and unknown modes have the one that ignores everything.
class ToolBox {
public:
    explicit ToolBox(std::span<const ToolMode> modes = tool_modes());

    MouseTool& tool(std::int32_t mode) { return *entry(mode).tool; }
    const ToolMode& facts(std::int32_t mode) const { return *entry(mode).facts; }
    /// ResetTools: every tool, in the order of the rows.
    void reset();

private:
    struct Entry {
        const ToolMode* facts = nullptr;
        std::unique_ptr<MouseTool> tool;
    };
    const Entry& entry(std::int32_t mode) const;

    std::span<const ToolMode> modes_;
    std::array<Entry, kLastMode + 1> entries_;
};

}  // namespace pixvane
