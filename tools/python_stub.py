"""The Python stub, hosts/python/pixvane/__init__.pyi, from the table of members: what editors complete by."""
# SPDX-License-Identifier: MIT
import keyword

from pixvane._table import documentation

ARGUMENT_TYPES = {
    "integer": "int",
    "double": "float",
    "boolean": "bool",
    "color": "int",
    "string": "Union[str, PathLike[str]]",
    "bytes": "Optional[Buffer]",
    "integers": "Iterable[int]",
    "points": "Iterable[int]",
    "values": "Any",
}
RESULT_TYPES = {
    "null": "None",
    "integer": "int",
    "double": "float",
    "boolean": "bool",
    "color": "int",
    "string": "str",
    "bytes": "Optional[bytes]",
    "integers": "Optional[List[int]]",
    "points": "Optional[List[int]]",
}

HEAD = '''\
# The types of Pixvane for Python. Written by tools/write_bindings.py; do not edit.
# SPDX-License-Identifier: MIT
from os import PathLike
from types import TracebackType
from typing import Any, Callable, Iterable, List, Literal, Optional, Type, Union, overload

from ._errors import PixvaneError as PixvaneError
from ._macros import MacroStep as MacroStep
from ._table import Argument as Argument, Member as Member
from ._window import Window as Window

Buffer = Any  # anything with contiguous memory: bytes, bytearray, memoryview, array, ...

__version__: str

def members() -> List[Member]:
    """Every method, property and event of the control, in the order of its table."""

def worker_threads() -> int:
    """How many threads work on one command, the caller included."""

def set_worker_threads(count: int) -> None:
    """Sets how many threads work on one command: 1 to 64. No result depends on it."""

def seed_random(state: int) -> None:
    """Starts the random numbers of this thread anew: the same state gives the same noise. Threads start with 1."""

def bitmap_limit() -> int:
    """The most bytes that all bitmaps of the process may take together."""

def set_bitmap_limit(count: int) -> None:
    """Sets the most bytes that all bitmaps of the process may take; beyond it, an edit fails for lack of memory."""

def bitmap_bytes() -> int:
    """Bytes in bitmaps now."""

class Pixvane:
    def __init__(self) -> None: ...
    def __enter__(self) -> Pixvane: ...
    def __exit__(
        self,
        type: Optional[Type[BaseException]],
        value: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None: ...
    def close(self) -> None:
        """Frees the picture, its history and the control; every later call raises PixvaneError."""

    @property
    def window(self) -> Window:
        """The window that the control is shown in: what happens to it, and what it shows."""

    def macro_steps(self) -> List[MacroStep]:
        """The steps of the macro, as a list of MacroStep."""
'''


def docstring(member):
    lines = documentation(member).splitlines()
    if len(lines) == 1:
        return ['        """%s"""' % lines[0]]
    return ['        """' + lines[0]] + [("        " + line).rstrip() for line in lines[1:]] + ['        """']


def parameter(argument):
    name = argument.name + "_" * keyword.iskeyword(argument.name)
    return "%s: %s" % (name, ARGUMENT_TYPES[argument.kind])


def method(member):
    fixed = [parameter(a) for a in member.arguments if a.kind != "values"]
    parameters = ["self"] + fixed + (["/"] if fixed else [])
    parameters += ["*" + parameter(a) for a in member.arguments if a.kind == "values"]
    head = "    def %s(%s) -> %s:" % (member.name, ", ".join(parameters), RESULT_TYPES[member.result])
    return ["", head] + docstring(member)


def property_(member):
    lines = ["", "    @property", "    def %s(self) -> %s:" % (member.name, RESULT_TYPES[member.result])]
    lines += docstring(member)
    if member.writable:
        kind = ARGUMENT_TYPES[member.arguments[0].kind]
        lines += ["    @%s.setter" % member.name, "    def %s(self, value: %s) -> None: ..." % (member.name, kind)]
    return lines


def subscription(events):
    """`on` once for each event, since each hands its handler something else."""
    lines = []
    for event in events:
        # A handler is handed what a member would return.
        kinds = ", ".join(RESULT_TYPES[a.kind] for a in event.arguments)
        lines += [""] + (["    @overload"] if len(events) > 1 else [])
        lines.append(
            '    def on(self, event: Literal["%s"], handler: Callable[[%s], object]) -> None:' % (event.name, kinds)
        )
        lines += docstring(event)
    names = ", ".join('"%s"' % event.name for event in events)
    lines += ["", "    def off(self, event: Literal[%s], handler: Optional[Callable[..., object]] = ...) -> None:" % names]
    return lines + ['        """Ends what `on` began: for this handler, or for all handlers of the event."""']


def stub(members):
    lines = HEAD.splitlines()
    if sum(member.type == "event" for member in members) == 1:
        lines = [line.replace(", Union, overload", ", Union") for line in lines]
    lines += subscription([member for member in members if member.type == "event"])
    for member in members:
        if member.type != "event":
            lines += method(member) if member.type == "method" else property_(member)
    return "\n".join(lines) + "\n"
