// What a tool is: it takes the mouse while its mode is set, and draws itself over the picture.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/geometry.h"
#include "core/pixel_buffer.h"
#include "core/value.h"
#include "core/viewport.h"

namespace pixvane {

class Canvas;
struct DrawSettings;

enum class MouseButton : std::int32_t { Left = 0, Middle = 1, Right = 2 };

/// Brings a point of the window to where its image point went when the view changed.
class PointCarrier {
public:
    PointCarrier(const Viewport& from, double fromZoom, const Viewport& to)
        : from_(from), to_(to), fromZoom_(fromZoom) {}
    WindowPoint operator()(WindowPoint point) const {
        return to_.ImageToWindow(to_.zoom(), from_.WindowToImage(fromZoom_, point));
    }

private:
    const Viewport& from_;
    const Viewport& to_;
    double fromZoom_;
};

/// What a tool asks of the control. A tool reads the view, the picture and the settings when it acts and
/// keeps no copies of them; it changes the picture by commit() alone.
class ToolHost {
public:
    virtual const Viewport& view() const = 0;
    /// The current picture; of size 0 x 0 when there is none.
    virtual ConstPixelBuffer picture() const = 0;
    virtual const DrawSettings& settings() const = 0;
    /// Where the pointer was told to be last.
    virtual WindowPoint pointer() const = 0;

    /// Runs a command of the member table as if the host program had called it: recorded, undoable, shown.
    virtual void commit(std::string_view command, std::span<const Value> arguments) = 0;
    /// Fires an event once the tool has returned and what it asked for has been shown. The name must last; so
    /// must texts among the arguments, of which there are two at most.
    virtual void fire(std::string_view event, std::span<const Value> arguments) = 0;
    virtual void repaint() = 0;
    /// Leaves the tool's mode for another; every tool is reset.
    virtual void set_mode(std::int32_t mode) = 0;
    virtual void set_capture(bool captured) = 0;

protected:
    ~ToolHost() = default;
};

/// One object for each mode, which lives as long as the control. Points are window coordinates, and may lie
/// outside of the window. The base ignores everything. commit(), repaint() and set_mode() can lead into the
/// host program and from there back into the tool, so a tool asks for them when its own state is settled.
class MouseTool {
public:
    virtual ~MouseTool() = default;
    /// Forgets every point and any half-made shape.
    virtual void Reset() {}
    virtual void MouseDown(ToolHost&, MouseButton, WindowPoint) {}
    /// Returns whether the tool changed, so that it wants to be drawn anew.
    virtual bool MouseMove(ToolHost&, WindowPoint) { return false; }
    virtual void MouseUp(ToolHost&, WindowPoint) {}
    /// Draws what lies over the picture.
    virtual void Draw(const ToolHost&, Canvas&) {}

    /// Whether no gesture is in progress.
    virtual bool is_idle() const { return true; }
    /// The view has changed: every point that is kept goes where its image point went.
    virtual void carry_over(const PointCarrier&) {}
    /// The timer of the mode has ticked. Returns whether the tool changed.
    virtual bool Tick(ToolHost&) { return false; }
};

}  // namespace pixvane
