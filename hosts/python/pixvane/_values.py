"""Values on their way into the library and out of it."""
# SPDX-License-Identifier: MIT
import ctypes
import numbers
import operator
import os
from ctypes import byref

from . import _library as lib
from ._errors import check


def _wrong(where, wanted, value):
    return TypeError("%s must be %s, not %s" % (where, wanted, type(value).__name__))


def int32(value, where, highest=0x7FFFFFFF):
    """The integer behind `value`, checked; a truth value is not a number here."""
    if type(value) is not int:
        if isinstance(value, bool):
            raise _wrong(where, "an integer", value)
        try:
            value = operator.index(value)
        except TypeError:
            raise _wrong(where, "an integer", value) from None
    if not -0x80000000 <= value <= highest:
        raise OverflowError("%s is beyond 32 bits" % where)
    return value


def text(value, where):
    """A string or a path as UTF-8. File names that are no UTF-8 come and go unchanged."""
    if not isinstance(value, str):
        try:
            value = os.fspath(value)
        except TypeError:
            raise _wrong(where, "a string", value) from None
        if not isinstance(value, str):
            raise _wrong(where, "a string", value)
    return value.encode("utf-8", "surrogateescape")


def _put_int32(slot, value, where, held):
    slot.kind = lib.INT32
    slot.i = int32(value, where)


def _put_double(slot, value, where, held):
    if type(value) is not float:
        if isinstance(value, bool) or not isinstance(value, numbers.Real):
            raise _wrong(where, "a number", value)
        value = float(value)
    slot.kind = lib.DOUBLE
    slot.d = value


def _put_bool(slot, value, where, held):
    if not isinstance(value, int):
        raise _wrong(where, "a boolean", value)
    slot.kind = lib.BOOL
    slot.i = -1 if value else 0


def _put_color(slot, value, where, held):
    slot.kind = lib.COLOR
    slot.i = int32(value, where, 0xFFFFFFFF)  # the field keeps the low 32 bits


def _put_string(slot, value, where, held):
    encoded = text(value, where)
    held.append(encoded)
    slot.kind = lib.STRING
    slot.data = lib.bytes_address(encoded)
    slot.size = len(encoded)


class _Borrowed:
    """The memory of a bytes-like object, lent until this is dropped."""

    def __init__(self, value, where):
        self._view = None
        view = lib.PyBuffer()
        try:
            lib.get_buffer(value, byref(view), 0)
        except TypeError:
            raise _wrong(where, "bytes-like or None", value) from None
        except Exception as failure:  # exporters differ in what they raise for memory with gaps
            raise BufferError("%s: %s" % (where, failure)) from None
        self._view = view
        self.address, self.size = view.buf, view.len

    def __del__(self, release=lib.release_buffer):
        if self._view is not None:
            release(byref(self._view))


def _put_bytes(slot, value, where, held):
    if value is None:
        slot.kind = lib.NULL
        return
    memory = _Borrowed(value, where)
    held.append(memory)
    slot.kind = lib.BYTES
    slot.data = memory.address
    slot.size = memory.size


def _put_numbers(slot, value, where, held):
    """Puts a sequence of integers; returns how many there are."""
    if value is None:
        slot.kind = lib.NULL
        return 0
    if isinstance(value, (str, bytes, bytearray)):
        raise _wrong(where, "a list of integers", value)
    try:
        elements = [int32(element, where) for element in value]
    except TypeError:
        raise TypeError("%s must be a list of integers" % where) from None
    array = (ctypes.c_int32 * len(elements))(*elements)
    held.append(array)
    slot.kind = lib.INT32_ARRAY
    slot.data = ctypes.addressof(array)
    slot.size = len(elements)
    return len(elements)


def _put_points(slot, value, where, held):
    count = _put_numbers(slot, value, where, held)
    if count % 2:
        raise ValueError("%s must hold an x and a y for each point" % where)
    if slot.kind != lib.NULL:
        slot.kind = lib.POINTS
        slot.size = count // 2


# By the name of a kind: writes a Python object into a value; what must outlive the call goes into `held`.
PUT = {
    "integer": _put_int32,
    "double": _put_double,
    "boolean": _put_bool,
    "color": _put_color,
    "string": _put_string,
    "bytes": _put_bytes,
    "integers": _put_numbers,
    "points": _put_points,
}


def _scalar(value):
    kind = value.kind
    if kind == lib.INT32:
        return value.i
    if kind == lib.BOOL:
        return value.i != 0
    if kind == lib.DOUBLE:
        return value.d
    if kind == lib.COLOR:
        return value.i & 0xFFFFFFFF
    return None


def _fresh_bytes(size, fill):
    """A bytes object of `size`, filled in place by `fill(address, size)`: one copy, however large."""
    memory = lib.new_bytes(None, size)
    fill(lib.bytes_address(memory), size)
    return memory


def result(control, value, member):
    """The Python form of what a call returned; arrays are fetched from the control."""
    if value.kind not in (lib.STRING, lib.BYTES, lib.INT32_ARRAY, lib.POINTS):
        return _scalar(value)

    def take(address, size):
        check(lib.take_result(control, address, size), member)

    if value.kind in (lib.INT32_ARRAY, lib.POINTS):
        count = value.size * (2 if value.kind == lib.POINTS else 1)
        array = (ctypes.c_int32 * count)()
        take(ctypes.addressof(array), ctypes.sizeof(array))
        return list(array)
    memory = _fresh_bytes(value.size, take)
    return memory if value.kind == lib.BYTES else memory.decode("utf-8", "surrogateescape")


def frame_bytes(size, fill):
    return _fresh_bytes(size, fill)


def copied(value):
    """The Python form of a value whose memory is the library's: of an event's argument, or a macro's."""
    kind = value.kind
    if kind in (lib.STRING, lib.BYTES):
        memory = ctypes.string_at(value.data, value.size) if value.size else b""
        return memory if kind == lib.BYTES else memory.decode("utf-8", "surrogateescape")
    if kind in (lib.INT32_ARRAY, lib.POINTS):
        count = value.size * (2 if kind == lib.POINTS else 1)
        return list((ctypes.c_int32 * count).from_address(value.data)) if count else []
    return _scalar(value)
