// Values of the control in Qt's types: what goes into a call and what comes back from it.
// SPDX-License-Identifier: MIT
#include "qt_values.h"

#include <QVarLengthArray>
#include <cstring>
#include <limits>

#include "control_link.h"

namespace pixvane {
namespace {

/// Bytes that one element of a result takes.
std::size_t element_size(int kind) {
    switch (kind) {
        case PIXVANE_STRING:
        case PIXVANE_BYTES:
            return 1;
        case PIXVANE_INT32_ARRAY:
            return 4;
        case PIXVANE_POINTS:
            return 8;
        default:
            return 0;
    }
}

template <class Element>
QByteArray bytes_of(const QList<Element>& elements) {
    return QByteArray(reinterpret_cast<const char*>(elements.constData()),
                      elements.size() * qsizetype{sizeof(Element)});
}

/// The elements behind a value, which may lie at any address.
template <class Element>
void copy_elements(const pixvane_value& value, QList<Element>& elements) {
    elements.resize(static_cast<qsizetype>(value.size));
    if (value.size != 0) std::memcpy(elements.data(), value.data, value.size * sizeof(Element));
}

QPolygon polygon(const QVariant& variant) {
    if (variant.canConvert<QPolygon>()) return variant.value<QPolygon>();
    QPolygon points;
    const QList<QVariant> list = variant.toList();
    for (const QVariant& point : list) points.append(point.toPoint());
    return points;
}

QList<int> integer_list(const QVariant& variant) {
    if (variant.metaType() == QMetaType::fromType<QList<int>>()) return variant.value<QList<int>>();
    QList<int> numbers;
    const QList<QVariant> list = variant.toList();
    for (const QVariant& number : list) numbers.append(number.toInt());
    return numbers;
}

/// The kind that a variant's own type stands for.
int kind_of(const QVariant& variant) {
    switch (variant.typeId()) {
        case QMetaType::UnknownType:
            return PIXVANE_NULL;
        case QMetaType::Bool:
            return PIXVANE_BOOL;
        case QMetaType::Double:
        case QMetaType::Float:
            return PIXVANE_DOUBLE;
        case QMetaType::QString:
            return PIXVANE_STRING;
        case QMetaType::QByteArray:
            return PIXVANE_BYTES;
        case QMetaType::QColor:
            return PIXVANE_COLOR;
        case QMetaType::QPolygon:
            return PIXVANE_POINTS;
        case QMetaType::QVariantList:
            return PIXVANE_INT32_ARRAY;
        default:
            return variant.metaType() == QMetaType::fromType<QList<int>>() ? PIXVANE_INT32_ARRAY
                                                                           : PIXVANE_INT32;
    }
}

}  // namespace

Argument::Argument(const QColor& color)
    : value_(
          pixvane_color(static_cast<std::uint32_t>(color.red() | color.green() << 8 | color.blue() << 16))) {}

Argument::Argument(const QString& text) : bytes_(text.toUtf8()) {
    value_ = pixvane_string_n(bytes_.constData(), static_cast<std::size_t>(bytes_.size()));
}

Argument::Argument(const QByteArray& bytes) : bytes_(bytes) {
    value_ = bytes_.isNull() ? pixvane_null()
                             : pixvane_bytes(bytes_.constData(), static_cast<std::size_t>(bytes_.size()));
}

Argument::Argument(const QList<int>& numbers) : bytes_(bytes_of(numbers)) {
    value_ = pixvane_int32_array(reinterpret_cast<const std::int32_t*>(bytes_.constData()),
                                 static_cast<std::size_t>(numbers.size()));
}

Argument::Argument(const QPolygon& points) : Argument(QList<int>()) {
    QList<int> coordinates;
    for (const QPoint& point : points) coordinates << point.x() << point.y();
    *this = Argument(coordinates);
    value_.kind = PIXVANE_POINTS;
    value_.size /= 2;
}

Argument Argument::from_variant(const QVariant& variant, int kind) {
    switch (kind == PIXVANE_VALUES ? kind_of(variant) : kind) {
        case PIXVANE_INT32:
            return variant.toInt();
        case PIXVANE_DOUBLE:
            return variant.toDouble();
        case PIXVANE_BOOL:
            return variant.toBool();
        case PIXVANE_STRING:
            return variant.toString();
        case PIXVANE_BYTES:
            return variant.toByteArray();
        case PIXVANE_INT32_ARRAY:
            return integer_list(variant);
        case PIXVANE_POINTS:
            return polygon(variant);
        case PIXVANE_COLOR: {
            if (variant.canConvert<QColor>() && variant.value<QColor>().isValid())
                return variant.value<QColor>();
            Argument number(variant.toInt());
            number.value_.kind = PIXVANE_COLOR;
            return number;
        }
        default:
            return {};
    }
}

QList<Argument> arguments_of(const QVariantList& variants) {
    QList<Argument> arguments;
    for (const QVariant& variant : variants)
        arguments.append(Argument::from_variant(variant, PIXVANE_VALUES));
    return arguments;
}

Reply::Reply(const pixvane_value& value, QByteArray elements)
    : elements_(std::move(elements)), value_(value) {
    if (element_size(value_.kind) != 0) value_.data = elements_.constData();
}

QColor Reply::color() const { return QColor(value_.i & 0xFF, value_.i >> 8 & 0xFF, value_.i >> 16 & 0xFF); }

QString Reply::text() const {
    return QString::fromUtf8(static_cast<const char*>(value_.data), static_cast<qsizetype>(value_.size));
}

QByteArray Reply::bytes() const {
    if (value_.kind == PIXVANE_NULL) return {};
    if (!elements_.isNull()) return elements_;
    return QByteArray(static_cast<const char*>(value_.data), static_cast<qsizetype>(value_.size));
}

QList<int> Reply::integers() const {
    QList<int> numbers;
    copy_elements(value_, numbers);
    return numbers;
}

QPolygon Reply::points() const {
    QPolygon points;
    const auto* at = static_cast<const char*>(value_.data);
    for (std::size_t i = 0; i < value_.size; ++i, at += 8) {
        std::int32_t point[2];
        std::memcpy(point, at, sizeof point);
        points << QPoint(point[0], point[1]);
    }
    return points;
}

QVariant Reply::variant() const {
    switch (value_.kind) {
        case PIXVANE_INT32:
            return integer();
        case PIXVANE_DOUBLE:
            return real();
        case PIXVANE_BOOL:
            return truth();
        case PIXVANE_STRING:
            return text();
        case PIXVANE_BYTES:
            return bytes();
        case PIXVANE_INT32_ARRAY:
            return QVariant::fromValue(integers());
        case PIXVANE_POINTS:
            return points();
        case PIXVANE_COLOR:
            return color();
        default:
            return {};
    }
}

Reply call_member(ControlLink& link, const char* member, const QList<Argument>& arguments,
                  pixvane_status* status) {
    QVarLengthArray<pixvane_value, 16> values;
    for (const Argument& argument : arguments) values.append(argument.value());
    pixvane_value result = pixvane_null();
    QByteArray elements;
    // Both steps stand inside of one run: between them nothing may end the link.
    const pixvane_status done = link.run([&](pixvane_control* control) {
        const pixvane_status called = pixvane_invoke(control, member, values.constData(),
                                                     static_cast<std::size_t>(values.size()), &result);
        const std::size_t size = element_size(result.kind);
        if (called != PIXVANE_OK || size == 0) return called;
        constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<qsizetype>::max());
        if (result.size > kMost / size) return pixvane_status{PIXVANE_E_MEMORY};
        try {
            elements = QByteArray(static_cast<qsizetype>(result.size * size), Qt::Uninitialized);
        } catch (const std::bad_alloc&) {
            return pixvane_status{PIXVANE_E_MEMORY};
        }
        return pixvane_take_result(control, elements.data(), static_cast<std::size_t>(elements.size()));
    });
    if (status != nullptr) *status = done;
    if (done == PIXVANE_OK) return Reply(result, std::move(elements));
    qWarning("Pixvane: %s: %s", member, pixvane_status_text(done));
    return {};
}

}  // namespace pixvane
