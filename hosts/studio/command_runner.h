// Runs commands, and tells a person what he waits for.
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>

#include "picture.h"
#include "run_times.h"

namespace studio {

class CommandRunner : public QObject {
    Q_OBJECT

public:
    explicit CommandRunner(Picture& picture, QObject* parent = nullptr);

    Picture& picture() { return picture_; }
    double expected_milliseconds(const Member& member) const;

    /// Runs a command on the picture and announces that it has changed.
    void run(const Member& member, const QVariantList& values = {});
    /// Does `work` for a command and notes how long it took. If that is expected to be long, waits() comes
    /// first.
    void timed(const Member& member, const std::function<void()>& work);
    /// Does what takes long, under a name.
    void waiting(const QString& name, const std::function<void()>& work);

signals:
    /// What is about to start takes long; an empty name: it has ended.
    void waits(const QString& name);

private:
    Picture& picture_;
    RunTimes times_;
};

}  // namespace studio
