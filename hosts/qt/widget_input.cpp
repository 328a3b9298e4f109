// The widget as the window of its control: the mouse, the wheel, the keys, dropped files.
// SPDX-License-Identifier: MIT
#include <QFile>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QUrl>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <vector>

#include "widget_window.h"

namespace {

constexpr int kNotch = 120;    // eighths of a degree
constexpr double kArrow = 48;  // how far an arrow key moves the picture, before the ratio
constexpr int kNoButton = -1;

int button_of(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return PIXVANE_LEFT;
        case Qt::MiddleButton:
            return PIXVANE_MIDDLE;
        case Qt::RightButton:
            return PIXVANE_RIGHT;
        default:
            return kNoButton;
    }
}

int held_buttons(Qt::MouseButtons buttons) {
    int held = 0;
    if (buttons & Qt::LeftButton) held |= PIXVANE_HELD_LEFT;
    if (buttons & Qt::MiddleButton) held |= PIXVANE_HELD_MIDDLE;
    if (buttons & Qt::RightButton) held |= PIXVANE_HELD_RIGHT;
    return held;
}

bool is_whole(QPointF point) { return point == QPointF(point.toPoint()); }

/// Where the mouse is. Windows round the position that they hand to their widgets to whole coordinates, of
/// which several pixels may be one; what they have cut off is left in the scene's position.
QPointF position_of(const QMouseEvent& event) {
    const QPointF rounded = event.position(), exact = event.scenePosition();
    return is_whole(rounded) ? rounded + (exact - QPointF(exact.toPoint())) : rounded;
}

}  // namespace

// ---- The mouse -------------------------------------------------------------------------------------------

QPoint PixvaneWidget::Window::mouse_point(const QMouseEvent& event) {
    mouseAt_ = position_of(event);
    return client_point(mouseAt_);
}

bool PixvaneWidget::Window::begin_pan(Qt::MouseButton button, QPoint at) {
    if (button != Qt::MiddleButton && !(button == Qt::LeftButton && spaceHeld_)) return false;
    panButton_ = button;
    panFrom_ = at;
    show_cursor();
    return button == Qt::LeftButton;
}

void PixvaneWidget::Window::mouse_pressed(QMouseEvent& event, int what) {
    const int button = button_of(event.button());
    if (button == kNoButton) return event.ignore();
    const QPoint at = mouse_point(event);
    // The left button with the space bar is the widget's own; no tool hears of it.
    if (begin_pan(event.button(), at)) return;
    const int held = held_buttons(event.buttons());
    link_.run([=](pixvane_control* control) {
        return pixvane_window_mouse(control, what, button, at.x(), at.y(), held);
    });
}

void PixvaneWidget::Window::mouse_moved(QMouseEvent& event) {
    const QPointer<PixvaneWidget> alive(&widget_);
    const QPoint at = mouse_point(event);
    const int held = held_buttons(event.buttons());
    if (panButton_ != Qt::NoButton) {
        const QPoint by = at - panFrom_;
        panFrom_ = at;
        link_.run([by](pixvane_control* control) { return pixvane_window_pan(control, by.x(), by.y()); });
        if (!alive || panButton_ == Qt::LeftButton) return;
    }
    link_.run([=](pixvane_control* control) {
        return pixvane_window_mouse(control, PIXVANE_MOUSE_MOVE, 0, at.x(), at.y(), held);
    });
}

void PixvaneWidget::Window::mouse_released(QMouseEvent& event) {
    const QPointer<PixvaneWidget> alive(&widget_);
    const int button = button_of(event.button());
    if (button == kNoButton) return event.ignore();
    const QPoint at = mouse_point(event);
    const int held = held_buttons(event.buttons());
    if (event.button() == panButton_) {
        panButton_ = Qt::NoButton;
        show_cursor();
        if (event.button() == Qt::LeftButton) return;
    }
    link_.run([=](pixvane_control* control) {
        return pixvane_window_mouse(control, PIXVANE_MOUSE_UP, button, at.x(), at.y(), held);
    });
    if (alive && captured_) grab(held == 0);
}

void PixvaneWidget::Window::wheel_turned(QWheelEvent& event) {
    const int angle = event.angleDelta().y();
    if (event.phase() == Qt::ScrollBegin || (angle > 0) != (wheelAngle_ > 0)) wheelAngle_ = 0;
    // Touchpads and fine wheels turn by less than a notch at a time.
    wheelAngle_ += angle;
    const int notches = wheelAngle_ / kNotch;
    wheelAngle_ -= notches * kNotch;
    if (notches == 0) return;
    const QPoint at = client_point(event.position());
    link_.run(
        [=](pixvane_control* control) { return pixvane_window_wheel(control, notches, at.x(), at.y()); });
}

void PixvaneWidget::Window::let_go() {
    grab(false);
    spaceHeld_ = false;
    panButton_ = Qt::NoButton;
    show_cursor();
}

// ---- The keys --------------------------------------------------------------------------------------------

bool PixvaneWidget::Window::pan_key(int key) {
    const int step = static_cast<int>(kArrow * widget_.devicePixelRatioF());
    int dx = 0, dy = 0;
    switch (key) {
        case Qt::Key_Left:
            dx = step;
            break;
        case Qt::Key_Right:
            dx = -step;
            break;
        case Qt::Key_Up:
            dy = step;
            break;
        case Qt::Key_Down:
            dy = -step;
            break;
        default:
            return false;
    }
    link_.run([=](pixvane_control* control) { return pixvane_window_pan(control, dx, dy); });
    return true;
}

bool PixvaneWidget::Window::zoom_key(const QKeyEvent& event) {
    int steps = 0;
    if (event.key() == Qt::Key_Plus || event.key() == Qt::Key_Equal) steps = 1;
    if (event.key() == Qt::Key_Minus || event.key() == Qt::Key_Underscore) steps = -1;
    if (steps == 0) return false;
    const QSize size = clientSize_ / 2;
    link_.run([=](pixvane_control* control) {
        return pixvane_window_zoom_at(control, steps, size.width(), size.height());
    });
    return true;
}

bool PixvaneWidget::Window::command_key(const QKeyEvent& event) {
    static const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        void (PixvaneMembers::*command)();
    } commands[] = {
        {Qt::Key_Z, Qt::ControlModifier, &PixvaneMembers::Undo},
        {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, &PixvaneMembers::Redo},
        {Qt::Key_0, Qt::ControlModifier, &PixvaneMembers::ActialSize},
        {Qt::Key_9, Qt::ControlModifier, &PixvaneMembers::ZoomToFit},
    };
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    for (const auto& [key, wanted, command] : commands) {
        if (event.key() != key || modifiers != wanted) continue;
        (widget_.*command)();
        return true;
    }
    return false;
}

bool PixvaneWidget::Window::key_pressed(QKeyEvent& event) {
    if (!keyboardEnabled) return false;
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) return false;
    if (event.key() == Qt::Key_Space) {
        if (event.isAutoRepeat()) return spaceHeld_;
        spaceHeld_ = true;
        show_cursor();
        return true;
    }
    if (!(event.modifiers() & Qt::ControlModifier) && pan_key(event.key())) return true;
    return zoom_key(event) || command_key(event);
}

bool PixvaneWidget::Window::key_released(QKeyEvent& event) {
    if (event.key() != Qt::Key_Space || !spaceHeld_) return false;
    if (!event.isAutoRepeat()) {
        // A drag that has begun goes on until its button comes up.
        spaceHeld_ = false;
        show_cursor();
    }
    return true;
}

// ---- Dropped files ---------------------------------------------------------------------------------------

void PixvaneWidget::Window::files_dropped(const QList<QUrl>& urls) {
    QList<QByteArray> paths;
    for (const QUrl& url : urls)
        if (url.isLocalFile()) paths.append(QFile::encodeName(url.toLocalFile()));
    std::vector<const char*> pointers;
    for (const QByteArray& path : paths) pointers.push_back(path.constData());
    link_.run([&](pixvane_control* control) {
        return pixvane_window_drop(control, pointers.data(), pointers.size());
    });
}
