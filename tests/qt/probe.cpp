// A widget in a real window: probe WIDTH HEIGHT PICTURE. Does what it is told on its input, and says what
// happens. SPDX-License-Identifier: MIT
#include <QApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <string>

#include "pixvane_widget.h"
#include "support/widgets.h"

namespace {

using pixvane::test::EventLog;
using pixvane::test::frame_of;

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
