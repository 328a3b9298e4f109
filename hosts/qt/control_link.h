// Between a widget and its control: the call-backs, and a control that outlives its widget where it must.
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <utility>

#include "pixvane/pixvane.h"

class PixvaneMembers;

namespace pixvane {

/// What a control asks of the window that it is shown in.
class ControlWindow {
public:
    virtual void frame_ready() = 0;
    virtual void start_timer(std::int32_t id, std::int32_t milliseconds) = 0;
    virtual void stop_timer(std::int32_t id) = 0;
    virtual void set_capture(bool captured) = 0;
    virtual void set_cursor(std::int32_t cursor) = 0;
    /// Puts a BMP file on the clipboard; whether that worked.
    virtual bool offer_clipboard(const QByteArray& bmp) = 0;
    /// The picture file that is on the clipboard; null if there is none.
    virtual QByteArray requested_clipboard() = 0;

protected:
    ~ControlWindow() = default;
};

/// Owns a control. A slot may delete the widget while the control fires its signal: the widget then lets go
/// of the link, which frees the control as soon as the call that runs has come back. What a slot throws does
/// not pass through the control: it is kept, and thrown again by the call within which it was thrown.
class ControlLink {
public:
    using Emitter = void (*)(PixvaneMembers& members, const pixvane_value* arguments);

    /// Throws std::bad_alloc if no control can be made.
    explicit ControlLink(PixvaneMembers& members);
    ControlLink(const ControlLink&) = delete;
    ControlLink& operator=(const ControlLink&) = delete;

    pixvane_control* control() const { return control_; }
    /// Without a window (null), what the control asks for is ignored.
    void set_window(ControlWindow* window) { window_ = window; }
    /// `emitter` sends the signal of `event` whenever it fires.
    void listen(const char* event, Emitter emitter);
    /// The widget is gone: no call-back reaches it any more, and the link frees the control and itself.
    void abandon();

    /// Makes `call(control)`, a call of the C interface. The link may be gone afterwards, with its widget.
    template <class Call>
    pixvane_status run(Call&& call) {
        std::exception_ptr outer = enter();
        const pixvane_status status = call(control_);
        leave(std::move(outer));
        return status;
    }

private:
    struct Listener {
        ControlLink* link;
        Emitter emitter;
    };

    ~ControlLink() = default;
    std::exception_ptr enter();
    void leave(std::exception_ptr outer);
    void free();
    void keep(std::exception_ptr thrown);
    template <class Action>
    static void for_window(void* user, Action&& action) noexcept;
    static void dispatch(void* user, const pixvane_value* arguments, std::size_t count) noexcept;
    static pixvane_host call_backs(ControlLink* link);

    PixvaneMembers* members_;
    ControlWindow* window_ = nullptr;
    pixvane_control* control_ = nullptr;
    std::deque<Listener> listeners_;  ///< at addresses that stay
    int depth_ = 0;                   ///< of calls inside of each other
    std::exception_ptr thrown_;       ///< by a slot, during the call that runs
};

}  // namespace pixvane
