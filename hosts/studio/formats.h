// The formats that pictures are saved in.
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace studio {

struct Format {
    int type;  ///< of SaveImage
    QString name;
    QStringList endings;  ///< the first is the usual one
    bool hasQuality = false;
};

const QList<Format>& formats();
/// By the ending of a file's name; null if there is no format for it.
const Format* format_of(const QString& path);

/// "3.4 MB" or "812 KB".
QString size_text(qint64 bytes);

}  // namespace studio
