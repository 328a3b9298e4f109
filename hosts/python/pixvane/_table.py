"""The list of members as the library tells it, and how it reads in words."""
# SPDX-License-Identifier: MIT
import math
from typing import NamedTuple, Optional, Tuple

from . import _library as lib

TYPES = ("method", "property", "event")
KINDS = ("null", "integer", "double", "boolean", "string", "bytes", "integers", "points", "color", "values")


class Argument(NamedTuple):
    """An argument of a member. Pairs of numbers are None where the table gives none."""

    name: str
    kind: str
    range: Optional[Tuple[float, float]]
    slider: Optional[Tuple[float, float]]
    default: Optional[float]


class Member(NamedTuple):
    """A method, a property or an event of the control."""

    name: str
    type: str
    category: str
    help: str
    result: str
    writable: bool
    edits: bool
    macro_code: int
    arguments: Tuple[Argument, ...]


def _argument(info):
    return Argument(
        info.name.decode("utf-8"),
        KINDS[info.kind],
        (info.minimum, info.maximum) if info.has_range else None,
        (info.slider_minimum, info.slider_maximum) if info.has_slider else None,
        info.default_value if info.has_default else None,
    )


def _member(info):
    return Member(
        info.name.decode("utf-8"),
        TYPES[info.type],
        info.category.decode("utf-8"),
        info.help.decode("utf-8"),
        KINDS[info.result],
        bool(info.writable),
        bool(info.edits),
        info.macro_code,
        tuple(_argument(info.arguments[i]) for i in range(info.argument_count)),
    )


def members():
    """Every method, property and event of the control, in the order of its table."""
    return [_member(lib.member_at(i).contents) for i in range(lib.member_count())]


def number(value):
    """A number as short as it reads well: no fraction where there is none."""
    return str(int(value)) if math.isfinite(value) and value == int(value) else repr(value)


def accepted(limits):
    """An accepted range in words."""
    low, high = limits
    if math.isinf(low) and math.isinf(high):
        return "any finite number"
    if math.isinf(high):
        return "at least " + number(low)
    if math.isinf(low):
        return "at most " + number(high)
    return "%s to %s" % (number(low), number(high))


def _default(argument):
    if argument.kind == "boolean":
        return "true" if argument.default else "false"
    return "0x%06X" % int(argument.default) if argument.kind == "color" else number(argument.default)


def argument_text(argument):
    """What an argument takes, in one line."""
    parts = [argument.kind]
    if argument.range:
        parts.append(accepted(argument.range))
    if argument.slider:
        parts.append("slider %s to %s" % (number(argument.slider[0]), number(argument.slider[1])))
    if argument.default is not None:
        parts.append("default " + _default(argument))
    return ", ".join(parts)


def documentation(member):
    """The docstring of a member."""
    lines = [member.help]
    if member.arguments and member.type != "property":
        lines.append("")
        width = max(len(argument.name) for argument in member.arguments)
        lines += ["    %-*s  %s" % (width, a.name, argument_text(a)) for a in member.arguments]
    elif member.type == "property":
        lines.append("")
        kind = argument_text(member.arguments[0]) if member.arguments else member.result
        lines.append("    %s, %s" % (kind, "get and put" if member.writable else "read only"))
    if member.edits:
        lines += ["", "One step of the history: Undo takes it back."]
    return "\n".join(lines)
