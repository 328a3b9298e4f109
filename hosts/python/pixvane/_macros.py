"""What is in a control's macro."""
# SPDX-License-Identifier: MIT
from ctypes import byref, c_size_t
from typing import Any, Dict, NamedTuple, Optional

from . import _library as lib
from ._calls import call
from ._values import copied


class MacroStep(NamedTuple):
    """A step of a macro. `member` is None where the code is unknown; `offset` and `size` count the bytes of its
    arguments in the macro's stream. A step is not complete where the stream ends within its arguments or before:
    a run ends there, and `arguments` holds those that are whole."""

    code: int
    member: Optional[str]
    offset: int
    size: int
    complete: bool
    arguments: Dict[str, Any]


def macro_steps(control):
    count, step = c_size_t(), lib.MacroStep()
    call("macro_steps", lib.macro_step_count, control, byref(count))
    steps = []
    for index in range(count.value):
        call("macro_steps", lib.macro_step_at, control, index, byref(step))
        names = [step.names[i].decode("utf-8") for i in range(step.argument_count)]
        values = [copied(step.arguments[i]) for i in range(step.argument_count)]
        member = step.member.decode("utf-8") if step.member is not None else None
        steps.append(
            MacroStep(step.code, member, step.offset, step.size, bool(step.complete), dict(zip(names, values)))
        )
    return steps
