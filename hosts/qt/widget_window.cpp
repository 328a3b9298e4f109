// The widget as the window of its control: frames, pixels of the screen, timers, capture, cursors.
// SPDX-License-Identifier: MIT
#include "widget_window.h"

#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

// Products with ratios such as 1.1 end a hair beside the whole numbers that they stand for.
constexpr double kHair = 1e-3;
constexpr int kMostClientSide = 65535;

QCursor own_cursor(std::int32_t cursor) {
    std::int32_t width = 0, height = 0, hotX = 0, hotY = 0;
    if (pixvane_cursor_image(cursor, nullptr, 0, &width, &height, &hotX, &hotY) != PIXVANE_OK)
        return Qt::CrossCursor;
    QImage image(width, height, QImage::Format_ARGB32);
    if (image.isNull()) return Qt::CrossCursor;
    pixvane_cursor_image(cursor, image.bits(), static_cast<std::size_t>(image.sizeInBytes()), &width, &height,
                         &hotX, &hotY);
    return QCursor(QPixmap::fromImage(image), hotX, hotY);
}

}  // namespace

PixvaneWidget::Window::Window(PixvaneWidget& widget, pixvane::ControlLink& link)
    : widget_(widget), link_(link) {
    link_.set_window(this);
}

PixvaneWidget::Window::~Window() {
    link_.set_window(nullptr);
    grab(false);
}

// ---- Pixels of the screen --------------------------------------------------------------------------------

QPointF PixvaneWidget::Window::corner() const {
    // At a ratio such as 1.25, a widget may begin within a pixel.
    const QPointF at = QPointF(widget_.mapTo(widget_.window(), QPoint(0, 0))) * widget_.devicePixelRatioF();
    return {at.x() - std::floor(at.x() + kHair), at.y() - std::floor(at.y() + kHair)};
}

QPoint PixvaneWidget::Window::client_point(QPointF position) const {
    const QPointF at = position * widget_.devicePixelRatioF() + corner();
    return {static_cast<int>(std::floor(at.x() + kHair)), static_cast<int>(std::floor(at.y() + kHair))};
}

QSize PixvaneWidget::Window::client_size() const {
    const double ratio = widget_.devicePixelRatioF();
    const QPointF begin = corner();
    const auto side = [ratio](int length, double from) {
        return std::min(static_cast<int>(std::ceil(length * ratio + from - kHair)), kMostClientSide);
    };
    return {side(widget_.width(), begin.x()), side(widget_.height(), begin.y())};
}

void PixvaneWidget::Window::follow_size() {
    const QSize size = client_size();
    if (size == clientSize_) return;
    clientSize_ = size;
    followingSize_ = true;
    link_.run([size](pixvane_control* control) {
        return pixvane_window_resize(control, size.width(), size.height());
    });
    // What was loaded before there was a window to fit it into.
    if (!painted_) fit_as_loaded();
    followingSize_ = false;
}

void PixvaneWidget::Window::fit_as_loaded() {
    if (widget_.IsEmpty()) return;
    widget_.ZoomToFit();
    const bool fitsAsItIs =
        widget_.ImageWidth() < clientSize_.width() && widget_.ImageHeight() < clientSize_.height();
    // ActialSize stops at a limit first if it comes from beyond it.
    for (int i = 0; fitsAsItIs && widget_.Zoom() != 1.0 && i < 2; ++i) widget_.ActialSize();
}

// ---- Frames ----------------------------------------------------------------------------------------------

void PixvaneWidget::Window::frame_ready() {
    widget_.update();
    // In the middle of a resize or a paint Qt can't do without the widget, so slots wait.
    if (followingSize_)
        QMetaObject::invokeMethod(&widget_, &PixvaneWidget::frameChanged, Qt::QueuedConnection);
    else
        Q_EMIT widget_.frameChanged();
}

void PixvaneWidget::Window::paint() {
    // Here and not only when the widget is resized: another screen may have another ratio.
    follow_size();
    painted_ = true;
    QPainter painter(&widget_);
    const void* pixels = nullptr;
    std::int32_t width = 0, height = 0;
    pixvane_window_frame_pixels(link_.control(), &pixels, &width, &height);
    if (pixels == nullptr) {
        painter.fillRect(widget_.rect(), widget_.palette().window());
        return;
    }
    // The control's own memory, which stays as it is while it is painted from.
    QImage frame(static_cast<const uchar*>(pixels), width, height, qsizetype{width} * 4,
                 QImage::Format_RGB32);
    // Pixel by pixel: from where a pixel of the screen begins, at the screen's own ratio.
    const QTransform toScreen = painter.deviceTransform();
    const QPointF begin = toScreen.map(QPointF(0, 0));
    const QPointF pixel(std::floor(begin.x() + kHair), std::floor(begin.y() + kHair));
    frame.setDevicePixelRatio(painter.device()->devicePixelRatioF());
    painter.drawImage(toScreen.inverted().map(pixel), frame);
}

// ---- Timers ----------------------------------------------------------------------------------------------

void PixvaneWidget::Window::start_timer(std::int32_t id, std::int32_t milliseconds) {
    std::unique_ptr<QTimer>& timer = timers_[id];
    if (!timer) {
        timer = std::make_unique<QTimer>();
        timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(timer.get(), &QTimer::timeout, &widget_, [this, id] {
            link_.run([id](pixvane_control* control) { return pixvane_window_timer(control, id); });
        });
    }
    timer->start(std::max(milliseconds, 1));
}

void PixvaneWidget::Window::stop_timer(std::int32_t id) {
    const auto found = timers_.find(id);
    // Kept: it may be the one that ticks just now.
    if (found != timers_.end()) found->second->stop();
}

// ---- Capture and cursors ---------------------------------------------------------------------------------

void PixvaneWidget::Window::set_capture(bool captured) {
    captured_ = captured;
    // While a button is down the toolkit sends everything here anyhow, and a dialog that a slot opens stays
    // usable; what is captured beyond that is grabbed when the button comes up.
    grab(captured && QGuiApplication::mouseButtons() == Qt::NoButton);
}

void PixvaneWidget::Window::grab(bool grabbed) {
    if (grabbed == grabbed_ || (grabbed && !widget_.isVisible())) return;
    grabbed_ = grabbed;
    if (grabbed)
        widget_.grabMouse();
    else
        widget_.releaseMouse();
}

void PixvaneWidget::Window::set_cursor(std::int32_t cursor) {
    cursor_ = cursor;
    show_cursor();
}

void PixvaneWidget::Window::show_cursor() {
    const bool ours = panButton_ != Qt::NoButton || spaceHeld_ || cursor_ != 0;
    if (panButton_ != Qt::NoButton)
        widget_.setCursor(Qt::ClosedHandCursor);
    else if (spaceHeld_)
        widget_.setCursor(Qt::OpenHandCursor);
    else if (cursor_ != 0)
        widget_.setCursor(own_cursor(cursor_));
    else if (cursorIsOurs_)
        widget_.unsetCursor();
    cursorIsOurs_ = ours;
}
