// The host's call-backs as the ports that the control wants; what a host doesn't take is kept here.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>

#include "pixvane/pixvane.h"
#include "view/host_window.h"

namespace pixvane {

class HostAdapter final : public HostWindow {
public:
    /// `host` may be null, or end early as its struct_size says.
    explicit HostAdapter(const pixvane_host* host);

    void frame_ready() override;
    void start_timer(std::int32_t id, std::int32_t milliseconds) override;
    void stop_timer(std::int32_t id) override;
    void set_capture(bool captured) override;
    void set_cursor(std::int32_t cursor) override;

    /// Interval by id of the running timers that the host doesn't keep itself.
    const std::map<std::int32_t, std::int32_t>& timers() const { return timers_; }
    bool captured() const { return captured_; }
    std::int32_t cursor() const { return cursor_; }

private:
    pixvane_host host_{};
    std::map<std::int32_t, std::int32_t> timers_;
    bool captured_ = false;
    std::int32_t cursor_ = 0;
};

}  // namespace pixvane
