"""The typed C++ face, include/pixvane/pixvane.hpp, from the table of members."""
# SPDX-License-Identifier: MIT
from pixvane._table import argument_text

COLUMNS = 110

ARGUMENT_TYPES = {
    "integer": "std::int32_t",
    "double": "double",
    "boolean": "bool",
    "color": "std::uint32_t",
    "string": "std::string_view",
    "bytes": "View<std::uint8_t>",
    "integers": "View<std::int32_t>",
    "points": "View<std::int32_t>",
    "values": "const Values&...",
}
RESULT_TYPES = {
    "null": "void",
    "integer": "std::int32_t",
    "double": "double",
    "boolean": "bool",
    "color": "std::uint32_t",
    "string": "std::string",
    "bytes": "std::optional<std::vector<std::uint8_t>>",
    "integers": "std::vector<std::int32_t>",
    "points": "std::vector<std::int32_t>",
}
TO_VALUE = {"color": "pixvane_color(%s)", "points": "points_value(%s)", "values": "to_value(%s)..."}
# How the call is written into, and what follows it.
SCALAR_CALLS = {
    "null": ("call(", ");"),
    "integer": ("return call(", ").i;"),
    "double": ("return call(", ").d;"),
    "boolean": ("return call(", ").i != 0;"),
    "color": ("return static_cast<std::uint32_t>(call(", ").i);"),
}
FROM_RESULT = {
    "string": ['return take<std::string>("%s", result);'],
    "bytes": [
        "if (result.kind == PIXVANE_NULL) return std::nullopt;",
        'return take<std::vector<std::uint8_t>>("%s", result);',
    ],
    "integers": ['return take<std::vector<std::int32_t>>("%s", result);'],
    "points": ['return take<std::vector<std::int32_t>>("%s", result, 2);'],
}
FROM_EVENT = {
    "integer": "values[%d].i",
    "double": "values[%d].d",
    "boolean": "values[%d].i != 0",
    "color": "static_cast<std::uint32_t>(values[%d].i)",
    "string": "text_of(values[%d])",
    "bytes": "view_of<std::uint8_t>(values[%d], values[%d].size)",
    "integers": "view_of<std::int32_t>(values[%d], values[%d].size)",
    "points": "view_of<std::int32_t>(values[%d], values[%d].size * 2)",
}

HEAD = """\
// Pixvane for C++ hosts: every member as a typed method. Written by tools/write_bindings.py; do not edit.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pixvane/control.hpp"

namespace pixvane {

/// An image-editing control. A property X is read by X() and put by put_X(value); on_E(handler) listens to
/// the event E until off() of the number that it returns. Colours are 0x00BBGGRR, see rgb(). A call that the
/// control refuses throws Error; a member that has nothing to return gives an empty vector or nullopt.
class IPixvane : public Control {
public:
    using Control::Control;
    // Lines are broken where the program that writes them breaks them.
    // clang-format off
"""
TAIL = """\
    // clang-format on
};

}  // namespace pixvane
"""


def wrapped(indent, opening, items, closing):
    """`opening` with items separated by commas; lines too long are broken behind a comma, under the bracket."""
    hanging = " " * (indent + len(opening))
    lines, line = [], " " * indent + opening
    for i, item in enumerate(items):
        piece = item + ("," if i + 1 < len(items) else closing)
        space = "" if line.endswith(("(", "{")) or line == hanging else " "
        if len(line) + len(space) + len(piece) > COLUMNS and line != hanging:
            lines.append(line)
            line, space = hanging, ""
        line += space + piece
    return lines + [line if items else line + closing]


def comment(member, arguments):
    lines = ["    /// " + member.help]
    for argument in arguments:
        if argument.range or argument.slider or argument.default is not None:
            lines.append("    /// %s: %s." % (argument.name, argument_text(argument)))
    return lines


def function(member, name, result, arguments):
    parameters = ["%s %s" % (ARGUMENT_TYPES[a.kind], a.name) for a in arguments]
    values = [TO_VALUE.get(a.kind, "to_value(%s)") % a.name for a in arguments]
    lines = comment(member, arguments)
    if any(a.kind == "values" for a in arguments):
        lines.append("    template <class... Values>")
    lines += wrapped(4, "%s %s(" % (RESULT_TYPES[result], name), parameters, ") {")
    lines.append('        static const std::int32_t member = pixvane_find_member("%s");' % member.name)
    opening, closing = SCALAR_CALLS.get(result, ("const pixvane_value result = call(", ");"))
    lines += wrapped(8, opening, ['"%s"' % member.name, "member"] + values, closing)
    for line in FROM_RESULT.get(result, []):
        lines.append("        " + (line % member.name if "%s" in line else line))
    return lines + ["    }"]


def event(member):
    types = ["%s %s" % (ARGUMENT_TYPES[a.kind], a.name) for a in member.arguments]
    parts = [FROM_EVENT[a.kind] for a in member.arguments]
    values = [part % ((i,) * part.count("%d")) for i, part in enumerate(parts)]
    parameters = "const pixvane_value*%s, std::size_t" % (" values" if values else "")
    lines = comment(member, member.arguments)
    lines += wrapped(4, "std::int32_t on_%s(std::function<void(" % member.name, types, ")> handler) {")
    lines.append(
        '        return on("%s", [handler = std::move(handler)](%s) {' % (member.name, parameters)
    )
    lines += wrapped(12, "handler(", values, ");")
    return lines + ["        });", "    }"]


def header(members):
    lines = HEAD.splitlines()
    categories = list(dict.fromkeys(member.category for member in members))
    for category in categories:
        lines += ["", "    // ---- %s ----" % category, ""]
        for member in members:
            if member.category != category:
                continue
            if member.type == "event":
                lines += event(member)
            elif member.type == "method":
                lines += function(member, member.name, member.result, member.arguments)
            else:
                lines += function(member, member.name, member.result, ())
                if member.writable:
                    lines += function(member, "put_" + member.name, "null", member.arguments)
    return "\n".join(lines + TAIL.splitlines()) + "\n"
