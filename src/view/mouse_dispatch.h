// Where the messages of the mouse go: to the host's events, the overview panel, a drag of the picture, a
// tool. SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "view/host_window.h"
#include "view/mouse_tool.h"
#include "view/scroll_window.h"
#include "view/tool_modes.h"

namespace pixvane {

/// What the mouse moves beyond the window: the control.
class MouseHost {
public:
    virtual ConstPixelBuffer current_picture() const = 0;
    virtual const DrawSettings& draw_settings() const = 0;
    virtual void run_command(std::string_view command, std::span<const Value> arguments) = 0;
    virtual void fire_event(std::string_view event, std::span<const Value> arguments) = 0;
    virtual void Repaint() = 0;

protected:
    ~MouseHost() = default;
};

struct MouseMessage {
    enum class What : std::int32_t { Down, Up, Move, DoubleClick };
    enum Held : std::int32_t { kHeldLeft = 1, kHeldMiddle = 2, kHeldRight = 4 };

    What what;
    MouseButton button = MouseButton::Left;  ///< of all but moves
    WindowPoint at;         ///< taken as 16 bits with a sign: what is beyond counts as their end
    std::int32_t held = 0;  ///< of moves: a sum of Held
};

/// Every event and every call of the host window may lead back into the control, which may then have another
/// picture, none, or another mode: nothing is assumed to last over them.
class MouseDispatch final : private ToolHost {
public:
    /// All of them must outlive the dispatch.
    MouseDispatch(MouseHost& host, Viewport& view, ScrollWindow& overview, HostWindow& window,
                  std::span<const ToolMode> modes = tool_modes());

    // Modes.
    std::int32_t mode() const { return mode_; }
    const ToolMode& facts() const { return tools_.facts(mode_); }
    /// Ends gestures and capture; changes timer and cursor if the mode does. Resets and repaints nothing.
    void SetToolMode(std::int32_t mode);
    void ResetTools() { tools_.reset(); }
    /// The view has changed: the tool's points move with the picture.
    void carry_over(const PointCarrier& carrier);
    void draw_tool(Canvas& canvas) { tool().Draw(*this, canvas); }
    /// Whether the overview panel is there to be drawn and hit.
    bool overview_is_shown() const { return overview_.is_shown(view_) && !facts().hidesOverview; }

    // Messages.
    void handle(const MouseMessage& message);
    void tick(std::int32_t timer);
    /// The window goes: timer and capture are given back.
    void release_window();

private:
    static constexpr std::int32_t kToolTimer = 1;

    struct Pending {
        std::string_view event;
        std::array<Value, 2> arguments;
        std::size_t count;
    };

    // For tools.
    const Viewport& view() const override { return view_; }
    ConstPixelBuffer picture() const override { return host_.current_picture(); }
    const DrawSettings& settings() const override { return host_.draw_settings(); }
    WindowPoint pointer() const override { return pointer_; }
    void commit(std::string_view command, std::span<const Value> arguments) override;
    void fire(std::string_view event, std::span<const Value> arguments) override;
    void repaint() override { host_.Repaint(); }
    void set_mode(std::int32_t mode) override;
    void set_capture(bool captured) override;

    void button_down(MouseButton button, WindowPoint at);
    void button_up(MouseButton button, WindowPoint at);
    void move(WindowPoint at, std::int32_t held);
    void left_down(WindowPoint at);
    void left_up(WindowPoint at);
    bool press_in_overview(WindowPoint at);
    bool release_in_overview(WindowPoint at);
    void start_pan(WindowPoint at);
    void pan_to(WindowPoint at);
    void drag_frame_to(WindowPoint at);
    void end_gestures();
    void leave_without_picture();

    enum class Show { Always, IfChanged, Never };
    template <class Call>
    void with_tool(Show show, Call call);
    void deliver();

    bool has_picture() const { return host_.current_picture().width > 0; }
    MouseTool& tool() { return tools_.tool(mode_); }
    /// Fires one of the mouse events. False if there is no picture any more.
    bool tell(std::string_view event, std::int32_t button, WindowPoint at);

    MouseHost& host_;
    Viewport& view_;
    ScrollWindow& overview_;
    HostWindow& window_;
    ToolBox tools_;
    std::int32_t mode_ = kNoTool;
    std::int32_t cursor_ = 0;
    bool captured_ = false;
    // A drag of the picture: a flag, since a pointer left of or above the window has negative coordinates.
    bool panning_ = false;
    WindowPoint panAt_;
    WindowPoint pointer_;
    int insideTool_ = 0;
    std::vector<Pending> pending_;
};

}  // namespace pixvane
