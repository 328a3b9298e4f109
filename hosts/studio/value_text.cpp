// Values of the control as a person reads them.
// SPDX-License-Identifier: MIT
#include "value_text.h"

#include <QColor>
#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <cstring>

namespace studio {
namespace {

constexpr std::size_t kMostShown = 6;

QString list_text(const pixvane_value& value, std::size_t width) {
    QStringList parts;
    const auto* at = static_cast<const char*>(value.data);
    for (std::size_t i = 0; i < std::min(value.size, kMostShown); ++i) {
        QStringList element;
        for (std::size_t k = 0; k < width; ++k, at += sizeof(std::int32_t)) {
            std::int32_t number = 0;
            std::memcpy(&number, at, sizeof number);
            element.append(QString::number(number));
        }
        parts.append(element.join(QLatin1Char(',')));
    }
    if (value.size > kMostShown) parts.append(QStringLiteral("… %1").arg(value.size));
    return QLatin1Char('[') + parts.join(QLatin1Char(' ')) + QLatin1Char(']');
}

}  // namespace

QString text_of(const pixvane_value& value) {
    switch (value.kind) {
        case PIXVANE_INT32:
            return QString::number(value.i);
        case PIXVANE_DOUBLE:
            return QString::number(value.d, 'g', 6);
        case PIXVANE_BOOL:
            return value.i != 0 ? QStringLiteral("true") : QStringLiteral("false");
        case PIXVANE_COLOR:
            return QColor(value.i & 0xFF, value.i >> 8 & 0xFF, value.i >> 16 & 0xFF).name().toUpper();
        case PIXVANE_STRING:
            return QLatin1Char('"') +
                   QString::fromUtf8(static_cast<const char*>(value.data),
                                     static_cast<qsizetype>(value.size)) +
                   QLatin1Char('"');
        case PIXVANE_BYTES:
            return QCoreApplication::translate("Values", "%n byte(s)", nullptr, static_cast<int>(value.size));
        case PIXVANE_INT32_ARRAY:
            return list_text(value, 1);
        case PIXVANE_POINTS:
            return list_text(value, 2);
        default:
            return QStringLiteral("-");
    }
}

}  // namespace studio
