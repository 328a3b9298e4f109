// A program with one widget, for tests in a real window: says what happens, does what it is told on its
// input. SPDX-License-Identifier: MIT Usage: probe WIDTH HEIGHT PICTURE    the widget fills a window named
// "probe"
//        probe --source FILE           a window named "source", from which FILE can be dragged
#include <QApplication>
#include <QDrag>
#include <QElapsedTimer>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QSocketNotifier>
#include <QUrl>
#include <cstdio>
#include <iostream>
#include <string>

#include "pixvane_widget.h"
#include "widgets.h"

namespace {

using pixvane::test::EventLog;
using pixvane::test::frame_of;

class Source : public QWidget {
public:
    explicit Source(QString file) : file_(std::move(file)) {}

protected:
    void mousePressEvent(QMouseEvent*) override {
        auto* data = new QMimeData;
        data->setUrls({QUrl::fromLocalFile(file_)});
        auto* drag = new QDrag(this);
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }

private:
    QString file_;
};

void say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

/// Does what a line says, and answers in one line.
std::string obey(PixvaneWidget& widget, EventLog& log, const QStringList& words) {
    const QString& verb = words[0];
    if (verb == QLatin1String("events")) {
        std::string answer;
        for (const std::string& event : log.take()) answer += event + ";";
        return answer;
    }
    if (verb == QLatin1String("frame")) return frame_of(widget.control()).save(words[1]) ? "saved" : "failed";
    if (verb == QLatin1String("cursor")) return std::to_string(widget.cursor().shape());
    if (verb == QLatin1String("resize")) {
        widget.resize(words[1].toInt(), words[2].toInt());
        return "done";
    }
    QVariantList arguments;
    for (const QString& word : words.mid(1)) arguments.append(word);
    return "= " + widget.invoke(verb, arguments).toString().toStdString();
}

}  // namespace

int main(int count, char** texts) {
    QApplication application(count, texts);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--source")) {
        Source source(arguments.value(2));
        source.setWindowTitle(QStringLiteral("source"));
        source.setGeometry(0, 0, 100, 100);
        source.show();
        return QApplication::exec();
    }
    PixvaneWidget widget;
    EventLog log(widget);
    widget.setWindowTitle(QStringLiteral("probe"));
    widget.LoadImage(arguments.value(3));
    widget.setGeometry(120, 0, arguments.value(1).toInt(), arguments.value(2).toInt());
    widget.show();
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::string line;
        if (!std::getline(std::cin, line)) return QApplication::quit();
        say(obey(widget, log, QString::fromStdString(line).split(QLatin1Char(' '))));
    });
    return QApplication::exec();
}
