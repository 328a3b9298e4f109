"""Pixvane, an image-editing control for Python programs.

    import pixvane

    with pixvane.Pixvane() as p:
        if p.LoadImage("photo.jpg"):
            p.Autolevels()
            p.Saturate(130)
            p.SaveImage("better.png", 4)

`help(pixvane.Pixvane)` lists the members; `pixvane.members()` gives them as data.
"""
# SPDX-License-Identifier: MIT
from . import _library
from ._control import Pixvane
from ._errors import PixvaneError, check as _check
from ._macros import MacroStep
from ._table import Argument, Member, members
from ._values import int32 as _int32
from ._window import Window

__all__ = [
    "Argument",
    "MacroStep",
    "Member",
    "Pixvane",
    "PixvaneError",
    "Window",
    "bitmap_bytes",
    "bitmap_limit",
    "members",
    "seed_random",
    "set_bitmap_limit",
    "set_worker_threads",
    "worker_threads",
]

__version__ = _library.version().decode("ascii")


def worker_threads():
    """How many threads work on one command, the caller included."""
    return _library.worker_threads()


def set_worker_threads(count):
    """Sets how many threads work on one command: 1 to 64. No result depends on it."""
    _check(_library.set_worker_threads(_int32(count, "count")), "set_worker_threads")


def seed_random(state):
    """Starts the random numbers of this thread anew: the same state gives the same noise. Threads start with 1."""
    if isinstance(state, bool) or not isinstance(state, int):
        raise TypeError("state must be an integer, not %s" % type(state).__name__)
    if not 0 <= state < 1 << 32:
        raise OverflowError("state is beyond 32 bits")
    _library.seed_random(state)


def bitmap_limit():
    """The most bytes that all bitmaps of the process may take together."""
    return _library.bitmap_limit()


def set_bitmap_limit(count):
    """Sets the most bytes that all bitmaps of the process may take; beyond it, an edit fails for lack of memory."""
    if isinstance(count, bool) or not isinstance(count, int):
        raise TypeError("count must be an integer, not %s" % type(count).__name__)
    if not 0 <= count < 1 << 64:
        raise OverflowError("count is beyond 64 bits")
    _check(_library.set_bitmap_limit(count), "set_bitmap_limit")


def bitmap_bytes():
    """Bytes in bitmaps now."""
    return _library.bitmap_bytes()
