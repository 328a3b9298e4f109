"""What a Qt widget has of each member, hosts/qt/pixvane_members.h and .cpp, from the table of members."""
# SPDX-License-Identifier: MIT
from cpp_bindings import comment, wrapped

PARAMETER_TYPES = {
    "integer": "int",
    "double": "double",
    "boolean": "bool",
    "color": "const QColor&",
    "string": "const QString&",
    "bytes": "const QByteArray&",
    "integers": "const QList<int>&",
    "points": "const QPolygon&",
    "values": "const QVariantList&",
}
# The type of a result or a property, and how a reply gives it.
RESULTS = {
    "null": ("void", ""),
    "integer": ("int", "integer()"),
    "double": ("double", "real()"),
    "boolean": ("bool", "truth()"),
    "color": ("QColor", "color()"),
    "string": ("QString", "text()"),
    "bytes": ("QByteArray", "bytes()"),
    "integers": ("QList<int>", "integers()"),
    "points": ("QPolygon", "points()"),
}
# What a form's editor can show and keep.
DESIGNABLE = ("integer", "double", "boolean", "color", "string")

HEADER_HEAD = """\
// Each member of the control in Qt's terms. Written by tools/write_bindings.py; do not edit.
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QPolygon>
#include <QtWidgets/QWidget>

#include "pixvane_qt_global.h"

namespace pixvane {
class ControlLink;
}

// Lines are broken where the program that writes them breaks them.
// clang-format off

/// The members of the control, each by its published name: a property X is read by X() and put by setX(value), a
/// method is a slot, an event a signal. PixvaneWidget is the widget. A call that the control refuses is told in
/// the log and gives nothing; a member that has nothing to return gives a null array or an empty list.
class PIXVANE_QT_API PixvaneMembers : public QWidget {
    Q_OBJECT
"""
HEADER_TAIL = """\

protected:
    /// Throws std::bad_alloc if no control can be made.
    explicit PixvaneMembers(QWidget* parent);
    pixvane::ControlLink& link() const { return *link_; }

private:
    void listen();

    pixvane::ControlLink* link_;  // may outlive the widget
};
"""
SOURCE_HEAD = """\
// Each member of the control in Qt's terms. Written by tools/write_bindings.py; do not edit.
// SPDX-License-Identifier: MIT
#include "pixvane_members.h"

#include "control_link.h"
#include "qt_values.h"

using pixvane::Argument;
using pixvane::arguments_of;
using pixvane::call_member;
using pixvane::Reply;

// Lines are broken where the program that writes them breaks them.
// clang-format off

PixvaneMembers::PixvaneMembers(QWidget* parent) : QWidget(parent), link_(new pixvane::ControlLink(*this)) { listen(); }

PixvaneMembers::~PixvaneMembers() { link_->abandon(); }
"""


def setter(member):
    return "set" + member.name[:1].upper() + member.name[1:]


def parameters(arguments):
    return ["%s %s" % (PARAMETER_TYPES[a.kind], a.name) for a in arguments]


def declaration(member, name, result, arguments, ending=");"):
    return comment(member, arguments) + wrapped(4, "%s %s(" % (RESULTS[result][0], name), parameters(arguments), ending)


def property_line(member):
    kind = member.result
    write = " WRITE %s" % setter(member) if member.writable else ""
    editable = "" if member.writable and kind in DESIGNABLE else " DESIGNABLE false STORED false"
    return "    Q_PROPERTY(%s %s READ %s%s%s)" % (RESULTS[kind][0], member.name, member.name, write, editable)


def definition(member, name, result, arguments, const=""):
    opening = "%s PixvaneMembers::%s(" % (RESULTS[result][0], name)
    lines = wrapped(0, opening, parameters(arguments), ")%s {" % const)
    values = ["Argument(%s)" % a.name for a in arguments if a.kind != "values"]
    any_number = "".join(" + arguments_of(%s)" % a.name for a in arguments if a.kind == "values")
    reply = RESULTS[result][1]
    opening = "QList<Argument>{" if any_number else "{"
    call = ("return " if reply else "") + 'call_member(*link_, "%s", %s' % (member.name, opening)
    closing = "}%s)%s;" % (any_number, "." + reply if reply else "")
    return [""] + lines + wrapped(4, call, values, closing) + ["}"]


def listener(event):
    values = ["Reply(arguments[%d]).%s" % (i, RESULTS[a.kind][1]) for i, a in enumerate(event.arguments)]
    arguments = "const pixvane_value*" + (" arguments" if values else "")
    return (
        ['    link_->listen("%s", [](PixvaneMembers& members, %s) {' % (event.name, arguments)]
        + wrapped(8, "Q_EMIT members.%s(" % event.name, values, ");")
        + ["    });"]
    )


def split(members):
    return [[m for m in members if m.type == type] for type in ("property", "method", "event")]


def header(members):
    properties, methods, events = split(members)
    lines = HEADER_HEAD.splitlines() + [property_line(member) for member in properties]
    lines += ["", "public:", "    ~PixvaneMembers() override;", ""]
    for member in properties:
        lines += declaration(member, member.name, member.result, (), ") const;")
    lines += ["", "public Q_SLOTS:"]
    for member in properties:
        if member.writable:
            lines += declaration(member, setter(member), "null", member.arguments)
    for member in methods:
        lines += declaration(member, member.name, member.result, member.arguments)
    lines += ["", "Q_SIGNALS:"]
    for member in events:
        lines += declaration(member, member.name, "null", member.arguments)
    return "\n".join(lines + HEADER_TAIL.splitlines()) + "\n"


def source(members):
    properties, methods, events = split(members)
    lines = SOURCE_HEAD.splitlines() + ["", "void PixvaneMembers::listen() {"]
    for event in events:
        lines += listener(event)
    lines.append("}")
    for member in properties:
        lines += definition(member, member.name, member.result, (), " const")
        if member.writable:
            lines += definition(member, setter(member), "null", member.arguments)
    for member in methods:
        lines += definition(member, member.name, member.result, member.arguments)
    return "\n".join(lines) + "\n"
