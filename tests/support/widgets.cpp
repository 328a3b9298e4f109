// What the tests of the widget share.
// SPDX-License-Identifier: MIT
#include "support/widgets.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <QWheelEvent>
#include <cmath>

namespace pixvane::test {
namespace {

std::string text_of_values(const char* event, const pixvane_value* values, std::size_t count) {
    std::string line = event;
    for (std::size_t i = 0; i < count; ++i) {
        if (values[i].kind == PIXVANE_STRING)
            line += " " + std::string(static_cast<const char*>(values[i].data), values[i].size);
        else if (values[i].kind == PIXVANE_DOUBLE)
            line += " " + QByteArray::number(values[i].d).toStdString();
        else
            line += " " + std::to_string(values[i].i);
    }
    return line;
}

/// Connects any signal of a widget, whatever its arguments are.
class Receiver : public QObject {
public:
    using Told = std::function<void(const QVariantList& arguments)>;
    Receiver(QObject& sender, const QMetaMethod& signal, Told told)
        : QObject(&sender), signal_(signal), told_(std::move(told)) {
        QMetaObject::connect(&sender, signal.methodIndex(), this, QObject::staticMetaObject.methodCount());
    }
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod) return id;
        QVariantList values;
        for (int i = 0; i < signal_.parameterCount(); ++i)
            values.append(QVariant(signal_.parameterMetaType(i), arguments[i + 1]));
        told_(values);
        return -1;
    }

private:
    QMetaMethod signal_;
    Told told_;
};

}  // namespace

QByteArray patterned_pixels(int width, int height) {
    QByteArray pixels;
    pixels.reserve(qsizetype{width} * height * 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (const int value : {x * 7 + y * 3, x * 5 ^ y * 11, (x ^ y) * 13, 255})
                pixels.append(static_cast<char>(value & 0xFF));
    return pixels;
}

PictureFile::PictureFile(int width, int height) {
    static int made = 0;
    // A name that only works where all of it is handed on.
    path_ = QDir::temp().filePath(
        QStringLiteral("pixvane %1 %2 ä€.png").arg(QCoreApplication::applicationPid()).arg(++made));
    IPixvane control;
    const QByteArray pixels = patterned_pixels(width, height);
    control.LoadFromImageArray(
        {reinterpret_cast<const std::uint8_t*>(pixels.constData()), static_cast<std::size_t>(pixels.size())},
        width, height);
    EXPECT_TRUE(control.SaveImage(path_.toStdString(), 4));
}

PictureFile::~PictureFile() { QFile::remove(path_); }

QImage frame_of(pixvane_control* control) {
    std::int32_t width = 0, height = 0;
    EXPECT_EQ(pixvane_window_frame(control, nullptr, 0, &width, &height), PIXVANE_OK);
    QImage frame(width, height, QImage::Format_RGB32);
    EXPECT_EQ(pixvane_window_frame(control, frame.bits(), static_cast<std::size_t>(frame.sizeInBytes()),
                                   &width, &height),
              PIXVANE_OK);
    return frame.convertToFormat(QImage::Format_ARGB32);
}

QSize pixels_of(const PixvaneWidget& widget) {
    // As many as it touches.
    const double ratio = widget.devicePixelRatioF();
    const QPointF begin = QPointF(widget.mapTo(widget.window(), QPoint(0, 0))) * ratio;
    const QPointF end = begin + QPointF(widget.width(), widget.height()) * ratio;
    const auto touched = [](double from, double to) {
        return static_cast<int>(std::ceil(to - 1e-3) - std::floor(from + 1e-3));
    };
    return {touched(begin.x(), end.x()), touched(begin.y(), end.y())};
}

QPointF position_of(const PixvaneWidget& widget, int x, int y) {
    const double ratio = widget.devicePixelRatioF();
    const QPointF begin = QPointF(widget.mapTo(widget.window(), QPoint(0, 0))) * ratio;
    return (QPointF(std::floor(begin.x() + 1e-3) + x + 0.5, std::floor(begin.y() + 1e-3) + y + 0.5) - begin) /
           ratio;
}

Model::Model(const PixvaneWidget& widget) {
    const QSize size = pixels_of(widget);
    resize(size.width(), size.height());
    const QByteArray pixels = const_cast<PixvaneWidget&>(widget).GetImageArray();
    if (!pixels.isNull())
        LoadFromImageArray({reinterpret_cast<const std::uint8_t*>(pixels.constData()),
                            static_cast<std::size_t>(pixels.size())},
                           widget.ImageWidth(), widget.ImageHeight());
}

void send_mouse(PixvaneWidget& widget, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
                int x, int y) {
    const QPointF at = position_of(widget, x, y);
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void send_wheel(PixvaneWidget& widget, int angle, int x, int y, Qt::ScrollPhase phase) {
    const QPointF at = position_of(widget, x, y);
    QWheelEvent event(at, widget.mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                      phase, false);
    QApplication::sendEvent(&widget, &event);
}

bool send_drop(QWidget& widget, const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &drop);
    return drop.isAccepted();
}

void show(QWidget& window) {
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
}

void settle() {
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

EventLog::EventLog(PixvaneWidget& widget) {
    const QMetaObject* meta = widget.metaObject();
    for (int i = PixvaneMembers::staticMetaObject.methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Signal || !method.name().startsWith("On")) continue;
        new Receiver(widget, method, [this, method](const QVariantList& arguments) {
            std::string line = method.name().toStdString();
            for (const QVariant& argument : arguments) line += " " + argument.toString().toStdString();
            lines_.push_back(line);
        });
    }
}

EventLog::EventLog(IPixvane& control) {
    for (std::size_t i = 0; i < pixvane_member_count(); ++i) {
        const pixvane_member_info* info = pixvane_member_at(i);
        if (info->type != PIXVANE_EVENT) continue;
        control.on(info->name, [this, info](const pixvane_value* values, std::size_t count) {
            lines_.push_back(text_of_values(info->name, values, count));
        });
    }
}

}  // namespace pixvane::test
