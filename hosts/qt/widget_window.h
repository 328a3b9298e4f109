// The widget as the window of its control: frames, pixels of the screen, timers, the mouse, the clipboard.
// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QSize>
#include <QTimer>
#include <map>
#include <memory>

#include "control_link.h"
#include "pixvane_widget.h"

/// Every function that makes a call of the control may come back after the widget was deleted by a slot; what
/// has anything left to do then asks `alive`.
class PixvaneWidget::Window final : public pixvane::ControlWindow {
public:
    Window(PixvaneWidget& widget, pixvane::ControlLink& link);
    ~Window();

    /// Tells the control how many pixels of the screen it has, if that has changed. Slots run later.
    void follow_size();
    void paint();

    void mouse_pressed(QMouseEvent& event, int what);
    void mouse_released(QMouseEvent& event);
    void mouse_moved(QMouseEvent& event);
    void wheel_turned(QWheelEvent& event);
    /// Whether the key means something.
    bool key_pressed(QKeyEvent& event);
    bool key_released(QKeyEvent& event);
    /// The mouse or the keyboard goes elsewhere: what is held is let go.
    void let_go();
    void files_dropped(const QList<QUrl>& urls);

    bool keyboardEnabled = true;

private:
    void frame_ready() override;
    void start_timer(std::int32_t id, std::int32_t milliseconds) override;
    void stop_timer(std::int32_t id) override;
    void set_capture(bool captured) override;
    void set_cursor(std::int32_t cursor) override;
    bool offer_clipboard(const QByteArray& bmp) override;
    QByteArray requested_clipboard() override;

    /// Where the widget's corner lies behind the pixel of the screen that holds it, in pixels, 0 to 1.
    QPointF corner() const;
    /// The pixel of the client area at a position in the widget's coordinates.
    QPoint client_point(QPointF position) const;
    QSize client_size() const;
    QPoint mouse_point(const QMouseEvent& event);
    void fit_as_loaded();
    void show_cursor();
    void grab(bool grabbed);
    bool begin_pan(Qt::MouseButton button, QPoint at);
    bool pan_key(int key);
    bool zoom_key(const QKeyEvent& event);
    bool command_key(const QKeyEvent& event);

    PixvaneWidget& widget_;
    pixvane::ControlLink& link_;

    bool painted_ = false;  ///< for the first time
    QSize clientSize_{0, 0};
    bool followingSize_ = false;

    std::map<std::int32_t, std::unique_ptr<QTimer>> timers_;
    std::int32_t cursor_ = 0;
    bool cursorIsOurs_ = false;
    bool captured_ = false;
    bool grabbed_ = false;

    QPointF mouseAt_;     ///< when it was last heard of
    int wheelAngle_ = 0;  ///< turned, but less than a notch
    bool spaceHeld_ = false;
    Qt::MouseButton panButton_ = Qt::NoButton;  ///< whose drag moves the picture
    QPoint panFrom_;
};
