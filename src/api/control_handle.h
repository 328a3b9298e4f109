// What stands behind a pixvane_control: the control, its host, its guard, and the result to be taken.
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <new>
#include <thread>

#include "api/host_adapter.h"
#include "api/shown_steps.h"
#include "control/cpixvane.h"
#include "pixvane/pixvane.h"

struct pixvane_control {
    explicit pixvane_control(const pixvane_host* host);

    pixvane::HostAdapter host;
    std::unique_ptr<pixvane::Rasterizer> rasterizer;
    pixvane::CPixvane control;
    pixvane::Result result;  // of the last invoke, until it is taken
    pixvane::ShownSteps shownSteps;

    // The thread that is inside, and how deep; a call-back may call in again.
    std::atomic<std::thread::id> owner{};
    int depth = 0;
};

namespace pixvane {

/// Holds a control for a call. Refused while another thread is inside.
class Entry {
public:
    explicit Entry(pixvane_control& control);
    ~Entry();
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    bool is_refused() const { return refused_; }

private:
    pixvane_control& control_;
    bool refused_ = false;
};

/// Runs the body of a call: `control` must not be null or taken, and no exception leaves.
template <class Body>
pixvane_status guarded(pixvane_control* control, Body body) noexcept {
    if (control == nullptr) return PIXVANE_E_NULL;
    const Entry entry(*control);
    if (entry.is_refused()) return PIXVANE_E_BUSY;
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return PIXVANE_E_MEMORY;
    } catch (...) {
        return PIXVANE_E_INTERNAL;
    }
}

}  // namespace pixvane
