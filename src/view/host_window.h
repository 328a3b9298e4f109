// The port through which the control reaches the window that it lives in.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace pixvane {

class HostWindow {
public:
    virtual ~HostWindow() = default;
    /// The view has changed and wants to be shown.
    virtual void frame_ready() = 0;
    /// Starts a timer that ticks every `milliseconds`, or changes the interval of one that runs.
    virtual void start_timer(std::int32_t id, std::int32_t milliseconds) = 0;
    virtual void stop_timer(std::int32_t id) = 0;
    virtual void set_capture(bool captured) = 0;
    /// 0 is the arrow; the other numbers are the control's own cursors.
    virtual void set_cursor(std::int32_t cursor) = 0;
};

}  // namespace pixvane
