// Where the messages of the mouse go: to the host's events, the overview panel, a drag of the picture, a
// tool. SPDX-License-Identifier: MIT
#include "view/mouse_dispatch.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/integer_math.h"

namespace pixvane {
namespace {

std::int32_t coordinate(std::int32_t position) {
    using Limits = std::numeric_limits<std::int16_t>;
    return std::clamp<std::int32_t>(position, Limits::min(), Limits::max());
}

/// The one button of a move: the left before the right before the middle one; -1 for none.
std::int32_t held_button(std::int32_t held) {
    if ((held & MouseMessage::kHeldLeft) != 0) return static_cast<std::int32_t>(MouseButton::Left);
    if ((held & MouseMessage::kHeldRight) != 0) return static_cast<std::int32_t>(MouseButton::Right);
    if ((held & MouseMessage::kHeldMiddle) != 0) return static_cast<std::int32_t>(MouseButton::Middle);
    return -1;
}

struct Counted {
    explicit Counted(int& depth) : depth_(depth) { ++depth_; }
    ~Counted() { --depth_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    int& depth_;
};

}  // namespace

MouseDispatch::MouseDispatch(MouseHost& host, Viewport& view, ScrollWindow& overview, HostWindow& window,
                             std::span<const ToolMode> modes)
    : host_(host), view_(view), overview_(overview), window_(window), tools_(modes) {}

// ---- Modes ----

void MouseDispatch::SetToolMode(std::int32_t mode) {
    const ToolMode& left = facts();
    const bool changes = mode != mode_;
    const bool hadTimer = left.tickMilliseconds != 0;
    mode_ = mode;
    end_gestures();
    // Each call may come back with a mode of its own, which then is the one that counts.
    if (changes && hadTimer) window_.stop_timer(kToolTimer);
    if (mode_ != mode) return;
    const ToolMode& entered = facts();
    if (changes && cursor_ != 0 && cursor_ != entered.cursor) {
        cursor_ = 0;
        window_.set_cursor(0);
    }
    if (mode_ != mode) return;
    if (changes && entered.tickMilliseconds != 0) window_.start_timer(kToolTimer, entered.tickMilliseconds);
    if (mode_ != mode) return;
    if (cursor_ != entered.cursor) {
        cursor_ = entered.cursor;
        window_.set_cursor(cursor_);
    }
}

void MouseDispatch::carry_over(const PointCarrier& carrier) {
    if (mode_ != kNoTool) tool().carry_over(carrier);
}

void MouseDispatch::end_gestures() {
    panning_ = false;
    overview_.end_drag();
    set_capture(false);
}

void MouseDispatch::release_window() {
    end_gestures();
    if (facts().tickMilliseconds != 0) window_.stop_timer(kToolTimer);
}

// ---- For tools ----

void MouseDispatch::commit(std::string_view command, std::span<const Value> arguments) {
    host_.run_command(command, arguments);
}

void MouseDispatch::fire(std::string_view event, std::span<const Value> arguments) {
    Pending pending{event, {}, 0};
    pending.count = std::min(arguments.size(), pending.arguments.size());
    std::copy_n(arguments.begin(), pending.count, pending.arguments.begin());
    pending_.push_back(pending);
}

void MouseDispatch::set_mode(std::int32_t mode) {
    SetToolMode(mode);
    ResetTools();
    host_.Repaint();
}

void MouseDispatch::set_capture(bool captured) {
    if (captured_) {
        captured_ = false;
        window_.set_capture(false);
    }
    if (!captured) return;
    captured_ = true;
    window_.set_capture(true);
}

/// Calls the tool, shows what became of it, and fires what it wants to be fired.
template <class Call>
void MouseDispatch::with_tool(Show show, Call call) {
    bool changed = false;
    {
        const Counted inside(insideTool_);
        changed = call(tool());
    }
    if (show == Show::Always || (show == Show::IfChanged && changed)) host_.Repaint();
    deliver();
}

void MouseDispatch::deliver() {
    // A tool further up the stack has not returned yet.
    if (insideTool_ != 0) return;
    const std::vector<Pending> events = std::exchange(pending_, {});
    for (const Pending& e : events) host_.fire_event(e.event, {e.arguments.data(), e.count});
}

// ---- Messages ----

void MouseDispatch::handle(const MouseMessage& message) {
    const WindowPoint at{coordinate(message.at.x), coordinate(message.at.y)};
    pointer_ = at;
    switch (message.what) {
        case MouseMessage::What::Down:
            return button_down(message.button, at);
        case MouseMessage::What::Up:
            return button_up(message.button, at);
        case MouseMessage::What::Move:
            return move(at, message.held);
        case MouseMessage::What::DoubleClick:
            tell("OnDblClick", static_cast<std::int32_t>(message.button), at);
            return;
    }
}

bool MouseDispatch::tell(std::string_view event, std::int32_t button, WindowPoint at) {
    if (!has_picture()) return false;
    const ImagePoint point = view_.WindowToImage(view_.zoom(), at);
    const Value arguments[] = {Value::integer(button), Value::integer(point.x), Value::integer(point.y)};
    host_.fire_event(event, arguments);
    return has_picture();
}

void MouseDispatch::button_down(MouseButton button, WindowPoint at) {
    if (button == MouseButton::Left) return left_down(at);
    if (!tell("OnMouseDown", static_cast<std::int32_t>(button), at)) return;
    if (button != MouseButton::Right || !facts().takesRightButton) return;
    with_tool(Show::Always, [&](MouseTool& tool) {
        tool.MouseDown(*this, MouseButton::Right, at);
        return true;
    });
}

void MouseDispatch::left_down(WindowPoint at) {
    const auto press = [&](MouseTool& tool) {
        tool.MouseDown(*this, MouseButton::Left, at);
        return false;
    };
    if (facts().comesFirst) with_tool(Show::Always, press);
    if (!tell("OnMouseDown", static_cast<std::int32_t>(MouseButton::Left), at)) return;
    if (press_in_overview(at)) return;
    if (mode_ == kNoTool)
        start_pan(at);
    else if (!facts().comesFirst)
        with_tool(Show::Never, press);
}

bool MouseDispatch::press_in_overview(WindowPoint at) {
    if (!overview_is_shown()) return false;
    if (overview_.hits_close_box(at)) {
        host_.fire_event("OnHitCloseScrollWindow", {});
        return true;
    }
    if (!overview_.hits_frame(at)) return false;
    overview_.begin_drag(at);
    set_capture(true);
    host_.Repaint();
    return true;
}

void MouseDispatch::start_pan(WindowPoint at) {
    view_.UpdateOverflow();
    if (!view_.overflow_x() && !view_.overflow_y()) return;
    panning_ = true;
    panAt_ = at;
    set_capture(true);
}

void MouseDispatch::move(WindowPoint at, std::int32_t held) {
    const auto follow = [&](MouseTool& tool) { return tool.MouseMove(*this, at); };
    if (facts().comesFirst) with_tool(Show::IfChanged, follow);
    if (!tell("OnMouseMove", held_button(held), at)) return;
    if (overview_.is_dragging()) return drag_frame_to(at);
    if (panning_) return pan_to(at);
    if (mode_ != kNoTool && !facts().comesFirst)
        with_tool(facts().drawsAtPointer ? Show::Always : Show::IfChanged, follow);
}

void MouseDispatch::drag_frame_to(WindowPoint at) {
    // Its panel may have been taken away in the meantime.
    if (!overview_is_shown()) return end_gestures();
    const Viewport before = view_;
    view_.ScrollTo(overview_.drag_to(at));
    carry_over({before, before.zoom(), view_});
    host_.Repaint();
}

void MouseDispatch::pan_to(WindowPoint at) {
    if (!view_.overflow_x() && !view_.overflow_y()) return;
    view_.pan(at.x - panAt_.x, at.y - panAt_.y);
    panAt_ = at;
    host_.Repaint();
}

void MouseDispatch::button_up(MouseButton button, WindowPoint at) {
    if (button == MouseButton::Left)
        left_up(at);
    else
        tell("OnMouseUp", static_cast<std::int32_t>(button), at);
}

void MouseDispatch::left_up(WindowPoint at) {
    const auto release = [&](MouseTool& tool) {
        tool.MouseUp(*this, at);
        return false;
    };
    if (facts().comesFirst) with_tool(Show::Always, release);
    if (!tell("OnMouseUp", static_cast<std::int32_t>(MouseButton::Left), at)) return leave_without_picture();
    if (release_in_overview(at)) return;
    if (mode_ == kNoTool)
        end_gestures();
    else if (!facts().comesFirst)
        with_tool(Show::Never, release);
}

bool MouseDispatch::release_in_overview(WindowPoint at) {
    if (overview_.is_dragging()) {
        end_gestures();
        host_.Repaint();
        return true;
    }
    // The end of a click on the close box; but a gesture that began elsewhere may end there, too.
    return overview_is_shown() && overview_.hits_close_box(at) && !panning_ && tool().is_idle();
}

/// The release that would have ended a gesture has come, but the picture is gone.
void MouseDispatch::leave_without_picture() {
    if (captured_ && !facts().comesFirst) tool().Reset();
    end_gestures();
}

void MouseDispatch::tick(std::int32_t timer) {
    if (!has_picture() || timer != kToolTimer || facts().tickMilliseconds == 0) return;
    with_tool(Show::IfChanged, [&](MouseTool& tool) { return tool.Tick(*this); });
}

}  // namespace pixvane
