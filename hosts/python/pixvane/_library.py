"""The shared library and its C interface as ctypes sees them."""
# SPDX-License-Identifier: MIT
import ctypes
import os
from ctypes import CFUNCTYPE, POINTER, Structure, c_char_p, c_double, c_int, c_int32, c_size_t, c_uint32, c_uint64, c_void_p

# The number in the soname: what this package was written for.
_SONAME = "libpixvane.so.0"

OK, E_NULL, E_MEMBER, E_COUNT, E_TYPE, E_RANGE, E_BUSY, E_MEMORY, E_INTERNAL = range(9)
NULL, INT32, DOUBLE, BOOL, STRING, BYTES, INT32_ARRAY, POINTS, COLOR, VALUES = range(10)
METHOD, PROPERTY, EVENT = range(3)


class Value(Structure):
    _fields_ = [("kind", c_int32), ("i", c_int32), ("d", c_double), ("data", c_void_p), ("size", c_size_t)]


class ArgumentInfo(Structure):
    _fields_ = [
        ("name", c_char_p),
        ("kind", c_int32),
        ("has_range", c_int32),
        ("minimum", c_double),
        ("maximum", c_double),
        ("has_slider", c_int32),
        ("slider_minimum", c_double),
        ("slider_maximum", c_double),
        ("has_default", c_int32),
        ("default_value", c_double),
    ]


class MemberInfo(Structure):
    _fields_ = [
        ("name", c_char_p),
        ("type", c_int32),
        ("category", c_char_p),
        ("help", c_char_p),
        ("result", c_int32),
        ("writable", c_int32),
        ("edits", c_int32),
        ("macro_code", c_int32),
        ("argument_count", c_int32),
        ("arguments", POINTER(ArgumentInfo)),
    ]


class MacroStep(Structure):
    _fields_ = [
        ("code", c_int32),
        ("member", c_char_p),
        ("offset", c_size_t),
        ("size", c_size_t),
        ("complete", c_int32),
        ("argument_count", c_int32),
        ("names", POINTER(c_char_p)),
        ("arguments", POINTER(Value)),
    ]


EventHandler = CFUNCTYPE(None, c_void_p, POINTER(Value), c_size_t)


def _candidates():
    """Where the library may be, best first."""
    named = os.environ.get("PIXVANE_LIBRARY")
    if named:
        yield named
        return
    try:
        # Written by the build and by the install, each for its own tree.
        from ._location import LIBRARY
    except ImportError:
        pass
    else:
        yield os.path.join(os.path.dirname(os.path.abspath(__file__)), LIBRARY)
    yield _SONAME


def _load():
    failures = []
    for path in _candidates():
        try:
            return ctypes.CDLL(path)
        except OSError as failure:
            failures.append(str(failure))
    raise ImportError(
        "the Pixvane library can't be loaded (%s); install it, or name it in the environment variable "
        "PIXVANE_LIBRARY" % "; ".join(failures)
    )


_library = _load()


def _function(name, result, *arguments):
    function = getattr(_library, "pixvane_" + name)
    function.restype = result
    function.argtypes = arguments
    return function


_values = POINTER(Value)
_out = POINTER(c_int32)

status_text = _function("status_text", c_char_p, c_int32)
create = _function("create", c_int32, c_void_p, POINTER(c_void_p))
free = _function("free", c_int32, c_void_p)
take_result = _function("take_result", c_int32, c_void_p, c_void_p, c_size_t)
find_member = _function("find_member", c_int32, c_char_p)
invoke_handle = _function("invoke_handle", c_int32, c_void_p, c_int32, _values, c_size_t, _values)
member_count = _function("member_count", c_size_t)
member_at = _function("member_at", POINTER(MemberInfo), c_size_t)
macro_step_count = _function("macro_step_count", c_int32, c_void_p, POINTER(c_size_t))
macro_step_at = _function("macro_step_at", c_int32, c_void_p, c_size_t, POINTER(MacroStep))
subscribe = _function("subscribe", c_int32, c_void_p, c_char_p, EventHandler, c_void_p, _out)
unsubscribe = _function("unsubscribe", c_int32, c_void_p, c_int32)

window_resize = _function("window_resize", c_int32, c_void_p, c_int32, c_int32)
window_mouse = _function("window_mouse", c_int32, c_void_p, *[c_int32] * 5)
window_timer = _function("window_timer", c_int32, c_void_p, c_int32)
window_drop = _function("window_drop", c_int32, c_void_p, POINTER(c_char_p), c_size_t)
window_wheel = _function("window_wheel", c_int32, c_void_p, *[c_int32] * 3)
window_zoom_at = _function("window_zoom_at", c_int32, c_void_p, *[c_int32] * 3)
window_pan = _function("window_pan", c_int32, c_void_p, c_int32, c_int32)
window_frame = _function("window_frame", c_int32, c_void_p, c_void_p, c_size_t, _out, _out)
window_timers = _function("window_timers", c_int32, c_void_p, _out, _out, c_size_t, POINTER(c_size_t))
window_captured = _function("window_captured", c_int32, c_void_p, _out)
window_cursor = _function("window_cursor", c_int32, c_void_p, _out)

cursor_image = _function("cursor_image", c_int32, c_int32, c_void_p, c_size_t, _out, _out, _out, _out)

set_worker_threads = _function("set_worker_threads", c_int32, c_int32)
worker_threads = _function("worker_threads", c_int32)
seed_random = _function("seed_random", None, c_uint32)
set_bitmap_limit = _function("set_bitmap_limit", c_int32, c_uint64)
bitmap_limit = _function("bitmap_limit", c_uint64)
bitmap_bytes = _function("bitmap_bytes", c_uint64)
version = _function("version", c_char_p)


class PyBuffer(Structure):
    """Py_buffer, which has looked like this since Python 3.0."""

    _fields_ = [
        ("buf", c_void_p),
        ("obj", c_void_p),
        ("len", ctypes.c_ssize_t),
        ("itemsize", ctypes.c_ssize_t),
        ("readonly", c_int),
        ("ndim", c_int),
        ("format", c_char_p),
        ("shape", c_void_p),
        ("strides", c_void_p),
        ("suboffsets", c_void_p),
        ("internal", c_void_p),
    ]


# Prototypes of their own: the functions of ctypes.pythonapi are shared with every other module.
get_buffer = ctypes.PYFUNCTYPE(c_int, ctypes.py_object, POINTER(PyBuffer), c_int)(
    ("PyObject_GetBuffer", ctypes.pythonapi)
)
release_buffer = ctypes.PYFUNCTYPE(None, POINTER(PyBuffer))(("PyBuffer_Release", ctypes.pythonapi))
new_bytes = ctypes.PYFUNCTYPE(ctypes.py_object, c_void_p, ctypes.c_ssize_t)(
    ("PyBytes_FromStringAndSize", ctypes.pythonapi)
)
bytes_address = ctypes.PYFUNCTYPE(c_void_p, ctypes.py_object)(("PyBytes_AsString", ctypes.pythonapi))
