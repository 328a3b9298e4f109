// Shows in the view what a command would do, while its arguments are being chosen.
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <QVariant>

#include "command_runner.h"

namespace studio {

/// One preview, from its making to finish(). Quick commands are shown at once, slow ones when the choice
/// rests.
class LivePreview : public QObject {
    Q_OBJECT

public:
    LivePreview(CommandRunner& runner, const Member& command, QObject* parent = nullptr);
    /// Leaves the picture as it was, unless it was finished.
    ~LivePreview() override;

    void request(const QVariantList& values);
    /// Shows the picture as it was, for as long as it is on.
    void show_before(bool on);
    /// Applies the command with the values of the last request, or leaves no trace.
    void finish(bool apply);

signals:
    /// The view shows something else than before.
    void shown();

private:
    void begin();
    void end(bool apply);
    void show_now();

    CommandRunner& runner_;
    const Member& command_;
    QVariantList values_;
    QTimer delay_;
    double lastMilliseconds_ = 0;
    bool isOpen_ = false;
    bool isBefore_ = false;
    bool isUpToDate_ = false;  ///< the view shows the values
};

}  // namespace studio
