// The host's call-backs as the ports that the control wants; what a host doesn't take is kept here.
// SPDX-License-Identifier: MIT
#include "api/host_adapter.h"

#include <algorithm>
#include <cstring>

namespace pixvane {

HostAdapter::HostAdapter(const pixvane_host* host) {
    // A host that was built with an older header has a shorter struct: what it doesn't know stays null.
    if (host != nullptr) std::memcpy(&host_, host, std::min(host->struct_size, sizeof host_));
}

void HostAdapter::frame_ready() {
    if (host_.frame_ready != nullptr) host_.frame_ready(host_.user);
}

void HostAdapter::start_timer(std::int32_t id, std::int32_t milliseconds) {
    if (host_.start_timer != nullptr)
        host_.start_timer(host_.user, id, milliseconds);
    else
        timers_[id] = milliseconds;
}

void HostAdapter::stop_timer(std::int32_t id) {
    if (host_.stop_timer != nullptr) host_.stop_timer(host_.user, id);
    timers_.erase(id);
}

void HostAdapter::set_capture(bool captured) {
    captured_ = captured;
    if (host_.set_capture != nullptr) host_.set_capture(host_.user, captured ? 1 : 0);
}

void HostAdapter::set_cursor(std::int32_t cursor) {
    cursor_ = cursor;
    if (host_.set_cursor != nullptr) host_.set_cursor(host_.user, cursor);
}

}  // namespace pixvane
