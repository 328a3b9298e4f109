"""The page of macro steps, docs/macro-steps.md: what lies in a macro file for each code. It is asked of the library
itself, by loading a macro of one step at a time and looking at how much of the stream each argument takes.
"""
# SPDX-License-Identifier: MIT
import os
import struct
import tempfile
from ctypes import byref

import pixvane
from pixvane import _library as lib
from pixvane._table import KINDS

HIGHEST_CODE = 255
MOST_BYTES = 64

HEAD = """\
# Steps of a macro

What stands in a macro file for each code, for programs that write or read them; [macros.md](macros.md) has the file
around it. Written by `tools/write_bindings.py` from what the library does; do not edit.

Arguments lie packed, little-endian, in this order. `i32` and `u32` are integers of 32 bits, `u8` one byte, `f64` a
double. Colours are 0x00BBGGRR, with or without an alpha on top. Where a list is counted, `n` is a `u32` before it. A
code that is not here takes no bytes and does nothing.

| Code | Played as | Bytes | Arguments |
|---|---|---|---|
"""
FORMS = {
    ("integer", 4): "i32",
    ("integer", 1): "u8",
    ("boolean", 1): "u8, 0 or 1",
    ("double", 8): "f64",
    ("color", 4): "u32, colour",
    ("integers", 4): "n, n x i32",
    ("points", 4): "n, n x (i32 x, i32 y)",
    ("string", 4): "n, n x u16, UTF-16",
    ("bytes", 0): "Width x Height x 4 bytes B, G, R, A, top row first",
}
ELEMENTS = {"integers": " + 4 n", "points": " + 8 n", "string": " + 2 n", "bytes": " + 4 x Width x Height"}


def load(control, path, code, size):
    """The one step of a macro with a stream of that many zeros; its names and kinds."""
    with open(path, "wb") as file:
        file.write(struct.pack("<Bii", 1, code, size) + bytes(size))
    if not control.LoadMacros(path):
        raise RuntimeError("the library refuses a macro of code %d" % code)
    step = lib.MacroStep()
    if lib.macro_step_at(control._control, 0, byref(step)):
        raise RuntimeError("the library does not show code %d" % code)
    arguments = [
        (step.names[i].decode("utf-8"), KINDS[step.arguments[i].kind]) for i in range(step.argument_count)
    ]
    return step.member, step.size, arguments


def row(control, path, code):
    member, size, arguments = load(control, path, code, MOST_BYTES)
    if member is None:
        return None
    # Where each argument ends: the shortest stream that holds it.
    ends = []
    for length in range(size + 1):
        whole = len(load(control, path, code, length)[2])
        ends += [length] * (whole - len(ends))
    starts = [0] + ends[:-1]
    fields = [
        "%s %s" % (name, FORMS[kind, end - start]) for (name, kind), start, end in zip(arguments, starts, ends)
    ]
    more = "".join(ELEMENTS.get(kind, "") for _, kind in arguments)
    return "| %d | %s | %d%s | %s |" % (code, member.decode("utf-8"), size, more, "; ".join(fields))


def page():
    with pixvane.Pixvane() as control, tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "macro")
        rows = [row(control, path, code) for code in range(HIGHEST_CODE + 1)]
    return HEAD + "\n".join(text for text in rows if text is not None) + "\n"
