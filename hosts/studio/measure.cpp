// Measures how soon the picture is seen, and how fluid it is moved.
// SPDX-License-Identifier: MIT
#include "measure.h"

#include <unistd.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QThread>
#include <cstdio>
#include <ctime>

namespace studio {
namespace {

double seconds_since_boot() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// When this process started; the system counts it in hundredths.
double start_of_process() {
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly)) return seconds_since_boot();
    const QByteArray line = file.readAll();
    // The name of the program, in parentheses, may hold blanks.
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    constexpr int kStartTime = 19;
    if (fields.size() <= kStartTime) return seconds_since_boot();
    return fields[kStartTime].toDouble() / static_cast<double>(sysconf(_SC_CLK_TCK));
}

void drag(PixvaneWidget& view) {
    constexpr int kFrames = 300;
    view.ActialSize();
    const QPointF middle(view.width() / 2.0, view.height() / 2.0);
    const auto send = [&](QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, view.mapToGlobal(at), button, held, Qt::NoModifier);
        QApplication::sendEvent(&view, &event);
    };
    send(QEvent::MouseButtonPress, middle, Qt::LeftButton, Qt::LeftButton);
    QElapsedTimer clock;
    clock.start();
    for (int i = 1; i <= kFrames; ++i) {
        const double way = i % 100 < 50 ? i % 50 : 50 - i % 50;
        send(QEvent::MouseMove, middle + QPointF(4 * way, 3 * way), Qt::NoButton, Qt::LeftButton);
        view.repaint();
        QApplication::processEvents();
    }
    const double seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    send(QEvent::MouseButtonRelease, middle, Qt::LeftButton, Qt::NoButton);
    std::printf("drag: %.0f frames per second, %d x %d pixels\n", kFrames / seconds,
                static_cast<int>(view.width() * view.devicePixelRatioF()),
                static_cast<int>(view.height() * view.devicePixelRatioF()));
}

class Watch : public QObject {
public:
    Watch(MainWindow& window, bool drags)
        : QObject(&window), window_(window), drags_(drags), start_(start_of_process()) {
        window.view().installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        const bool isPicture = !window_.view().IsEmpty();
        if (isPicture ? isPictureSeen_ : isWindowSeen_) return false;
        (isPicture ? isPictureSeen_ : isWindowSeen_) = true;
        // When the frame has been handed to the screen.
        QTimer::singleShot(0, this, [this, isPicture] { seen(isPicture); });
        return false;
    }

private:
    void seen(bool isPicture) {
        std::printf("%s: %.0f ms\n", isPicture ? "picture" : "window",
                    1000 * (seconds_since_boot() - start_));
        if (!isPicture) return;
        if (drags_) drag(window_.view());
        std::fflush(stdout);
        QApplication::quit();
    }

    MainWindow& window_;
    bool drags_;
    double start_;
    bool isWindowSeen_ = false, isPictureSeen_ = false;
};

}  // namespace

void measure_start(MainWindow& window, bool drags) { new Watch(window, drags); }

}  // namespace studio
