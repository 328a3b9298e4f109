// How long a command is expected to take, from how long it took.
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include "members.h"

namespace studio {

class RunTimes {
public:
    /// Milliseconds for a picture of this size. A command that never ran is taken for a moderate one.
    double expected(const Member& member, double megapixels) const;
    void note(const Member& member, double megapixels, double milliseconds);

private:
    QHash<QString, double> perMegapixel_;
};

/// From here on a person waits, and is told what for.
constexpr double kWaitMilliseconds = 100;

}  // namespace studio
