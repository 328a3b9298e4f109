// The formats that pictures are saved in.
// SPDX-License-Identifier: MIT
#include "formats.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>

namespace studio {

const QList<Format>& formats() {
    static const QList<Format> list = {
        {1,
         QStringLiteral("JPEG"),
         {QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("jpe")},
         true},
        {4, QStringLiteral("PNG"), {QStringLiteral("png")}},
        {3, QStringLiteral("TIFF"), {QStringLiteral("tif"), QStringLiteral("tiff")}},
        {2, QStringLiteral("GIF"), {QStringLiteral("gif")}},
        {0, QStringLiteral("BMP"), {QStringLiteral("bmp"), QStringLiteral("dib")}},
    };
    return list;
}

const Format* format_of(const QString& path) {
    const QString ending = QFileInfo(path).suffix().toLower();
    for (const Format& format : formats()) {
        if (format.endings.contains(ending)) return &format;
    }
    return nullptr;
}

QString size_text(qint64 bytes) {
    return QLocale().formattedDataSize(bytes, bytes < 1000000 ? 0 : 1, QLocale::DataSizeSIFormat);
}

}  // namespace studio
