// Between a widget and its control: the call-backs, and a control that outlives its widget where it must.
// SPDX-License-Identifier: MIT
#include "control_link.h"

#include <QTimer>
#include <new>

namespace pixvane {

ControlLink::ControlLink(PixvaneMembers& members) : members_(&members) {
    const pixvane_host host = call_backs(this);
    if (pixvane_create(&host, &control_) != PIXVANE_OK) throw std::bad_alloc();
}

void ControlLink::listen(const char* event, Emitter emitter) {
    listeners_.push_back({this, emitter});
    // An older library may lack an event; its signal is then never sent.
    pixvane_subscribe(control_, event, &ControlLink::dispatch, &listeners_.back(), nullptr);
}

void ControlLink::abandon() {
    members_ = nullptr;
    window_ = nullptr;
    if (depth_ == 0) free();
}

std::exception_ptr ControlLink::enter() {
    ++depth_;
    return std::exchange(thrown_, nullptr);
}

void ControlLink::leave(std::exception_ptr outer) {
    const std::exception_ptr thrown = std::exchange(thrown_, std::move(outer));
    if (--depth_ == 0 && members_ == nullptr) free();
    if (thrown) std::rethrow_exception(thrown);
}

void ControlLink::free() {
    // Busy within a call that the host made past the widget: that one ends, too.
    if (pixvane_free(control_) == PIXVANE_E_BUSY)
        QTimer::singleShot(10, [this] { free(); });
    else
        delete this;
}

void ControlLink::keep(std::exception_ptr thrown) {
    // A call that the host made past the widget can't throw: it is C.
    if (depth_ == 0)
        qCritical("Pixvane: an exception of a slot ended in a call of the C interface");
    else if (!thrown_)
        thrown_ = std::move(thrown);
}

template <class Action>
void ControlLink::for_window(void* user, Action&& action) noexcept {
    ControlLink& link = *static_cast<ControlLink*>(user);
    if (link.window_ == nullptr) return;
    try {
        action(*link.window_);
    } catch (...) {
        link.keep(std::current_exception());
    }
}

void ControlLink::dispatch(void* user, const pixvane_value* arguments, std::size_t) noexcept {
    const Listener& listener = *static_cast<Listener*>(user);
    ControlLink& link = *listener.link;
    if (link.members_ == nullptr) return;
    try {
        listener.emitter(*link.members_, arguments);
    } catch (...) {
        link.keep(std::current_exception());
    }
}

pixvane_host ControlLink::call_backs(ControlLink* link) {
    pixvane_host host{};
    host.struct_size = sizeof host;
    host.user = link;
    host.frame_ready = [](void* user) {
        for_window(user, [](ControlWindow& window) { window.frame_ready(); });
    };
    host.start_timer = [](void* user, std::int32_t id, std::int32_t milliseconds) {
        for_window(user, [=](ControlWindow& window) { window.start_timer(id, milliseconds); });
    };
    host.stop_timer = [](void* user, std::int32_t id) {
        for_window(user, [=](ControlWindow& window) { window.stop_timer(id); });
    };
    host.set_capture = [](void* user, std::int32_t captured) {
        for_window(user, [=](ControlWindow& window) { window.set_capture(captured != 0); });
    };
    host.set_cursor = [](void* user, std::int32_t cursor) {
        for_window(user, [=](ControlWindow& window) { window.set_cursor(cursor); });
    };
    host.offer_clipboard = [](void* user, const void* bmp, std::size_t size) -> std::int32_t {
        bool offered = false;
        for_window(user, [&](ControlWindow& window) {
            const QByteArray file(static_cast<const char*>(bmp), static_cast<qsizetype>(size));
            offered = window.offer_clipboard(file);
        });
        return offered ? 1 : 0;
    };
    host.request_clipboard = [](void* user, void (*deliver)(void*, const void*, std::size_t),
                                void* receiver) -> std::int32_t {
        QByteArray file;
        for_window(user, [&](ControlWindow& window) { file = window.requested_clipboard(); });
        if (file.isNull()) return 0;
        deliver(receiver, file.constData(), static_cast<std::size_t>(file.size()));
        return 1;
    };
    return host;
}

}  // namespace pixvane
