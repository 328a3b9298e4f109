// What the tests of the widget share: pictures, a control that stands beside a widget as its model, events.
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QEvent>
#include <QImage>
#include <QList>
#include <QPointF>
#include <QUrl>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "pixvane/pixvane.hpp"
#include "pixvane_widget.h"

namespace pixvane::test {

/// Pixels B, G, R, A in which no two neighbours are alike.
QByteArray patterned_pixels(int width, int height);

/// A picture that lies in a file, for as long as this lives.
class PictureFile {
public:
    PictureFile(int width, int height);
    ~PictureFile();
    const QString& path() const { return path_; }

private:
    QString path_;
};

/// What the control shows, as the C interface tells it; opaque.
QImage frame_of(pixvane_control* control);

/// A control without a toolkit, told in pixels what the widget is told by Qt: both must show the same.
class Model : public IPixvane {
public:
    /// Of the size that the widget has on the screen, with its picture.
    explicit Model(const PixvaneWidget& widget);
};

/// The pixels of the screen that a widget covers, counted from where its window begins.
QSize pixels_of(const PixvaneWidget& widget);

/// Where the middle of a pixel of the client area lies in the widget's coordinates.
QPointF position_of(const PixvaneWidget& widget, int x, int y);

void send_mouse(PixvaneWidget& widget, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
                int x, int y);
void send_wheel(PixvaneWidget& widget, int angle, int x, int y, Qt::ScrollPhase phase = Qt::NoScrollPhase);
/// Whether the widget took the drag that came before the drop.
bool send_drop(QWidget& widget, const QList<QUrl>& urls);

/// Shows the window and waits until it is painted.
void show(QWidget& window);
/// Runs the event loop until it has nothing left to do.
void settle();

/// Everything that a widget's events told, in order: their names and arguments.
class EventLog {
public:
    explicit EventLog(PixvaneWidget& widget);
    explicit EventLog(IPixvane& control);
    std::vector<std::string> take() { return std::exchange(lines_, {}); }

private:
    std::vector<std::string> lines_;
};

}  // namespace pixvane::test
