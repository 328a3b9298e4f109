// What stands behind a pixvane_control: the control, its host, its guard, and the result to be taken.
// SPDX-License-Identifier: MIT
#include "api/control_handle.h"

#include "api/platform.h"
#include "platform/cairo/cairo_rasterizer.h"

pixvane_control::pixvane_control(const pixvane_host* hostCallbacks)
    : host(hostCallbacks),
      rasterizer(pixvane::make_cairo_rasterizer()),
      control({pixvane::platform().codec, pixvane::platform().files, host, *rasterizer}) {}

namespace pixvane {

Entry::Entry(pixvane_control& control) : control_(control) {
    const std::thread::id self = std::this_thread::get_id();
    std::thread::id nobody{};
    if (control_.owner.load(std::memory_order_relaxed) != self &&
        !control_.owner.compare_exchange_strong(nobody, self, std::memory_order_acquire)) {
        refused_ = true;
        return;
    }
    ++control_.depth;
}

Entry::~Entry() {
    if (refused_) return;
    if (--control_.depth == 0) control_.owner.store({}, std::memory_order_release);
}

}  // namespace pixvane
