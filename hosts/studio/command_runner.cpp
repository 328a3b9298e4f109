// Runs commands, and tells a person what he waits for.
// SPDX-License-Identifier: MIT
#include "command_runner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>

namespace studio {

CommandRunner::CommandRunner(Picture& picture, QObject* parent) : QObject(parent), picture_(picture) {}

double CommandRunner::expected_milliseconds(const Member& member) const {
    return times_.expected(member, picture_.megapixels());
}

void CommandRunner::run(const Member& member, const QVariantList& values) {
    if (picture_.is_empty()) return;
    timed(member, [&] { picture_.call(member, values); });
    picture_.announce();
}

void CommandRunner::timed(const Member& member, const std::function<void()>& work) {
    const double megapixels = picture_.megapixels();
    double milliseconds = 0;
    const auto measured = [&] {
        QElapsedTimer clock;
        clock.start();
        work();
        milliseconds = static_cast<double>(clock.nsecsElapsed()) * 1e-6;
    };
    if (times_.expected(member, megapixels) > kWaitMilliseconds)
        waiting(title_of(member), measured);
    else
        measured();
    times_.note(member, megapixels, milliseconds);
}

void CommandRunner::waiting(const QString& name, const std::function<void()>& work) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    emit waits(name);
    // Name and cursor reach the screen before the work starts.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    work();
    QGuiApplication::restoreOverrideCursor();
    emit waits({});
}

}  // namespace studio
