// Values of the control in Qt's types: what goes into a call and what comes back from it.
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QPolygon>
#include <QString>
#include <QVariant>

#include "pixvane/pixvane.h"

namespace pixvane {

class ControlLink;

/// An argument of a call, with the memory behind it. Copies share that memory.
class Argument {
public:
    Argument(int number) : value_(pixvane_int32(number)) {}
    Argument(double number) : value_(pixvane_double(number)) {}
    Argument(bool truth) : value_(pixvane_bool(truth ? 1 : 0)) {}
    Argument(const QColor& color);
    Argument(const QString& text);
    Argument(const QByteArray& bytes);  ///< none at all if null
    Argument(const QList<int>& numbers);
    Argument(const QPolygon& points);
    /// From what a host has at hand, for an argument of `kind`; null if it can't become that. Where any kind
    /// will do (PIXVANE_VALUES), it is the variant's own.
    static Argument from_variant(const QVariant& variant, int kind);

    const pixvane_value& value() const { return value_; }

private:
    Argument() : value_(pixvane_null()) {}

    QByteArray bytes_;
    pixvane_value value_;
};

/// Each by its own type.
QList<Argument> arguments_of(const QVariantList& variants);

/// What came back: a value whose text or elements, if it has any, are here.
class Reply {
public:
    Reply() : value_(pixvane_null()) {}
    /// `value` refers to memory that lasts as long as the reply is used.
    explicit Reply(const pixvane_value& value) : value_(value) {}
    Reply(const pixvane_value& value, QByteArray elements);

    int integer() const { return value_.i; }
    double real() const { return value_.d; }
    bool truth() const { return value_.i != 0; }
    QColor color() const;
    QString text() const;
    QByteArray bytes() const;  ///< null if there are none
    QList<int> integers() const;
    QPolygon points() const;
    QVariant variant() const;  ///< invalid if nothing came back

private:
    QByteArray elements_;
    pixvane_value value_;
};

/// Calls a member. A call that is refused is told in the log, and gives an empty reply and its status.
Reply call_member(ControlLink& link, const char* member, const QList<Argument>& arguments,
                  pixvane_status* status = nullptr);

}  // namespace pixvane
