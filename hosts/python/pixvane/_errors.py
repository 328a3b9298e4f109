"""What a refused call raises."""
# SPDX-License-Identifier: MIT
from . import _library as lib


class PixvaneError(RuntimeError):
    """The control could not do what was asked: it is closed, busy with a call of another thread, or failed inside."""


_RAISED = {
    lib.E_MEMBER: AttributeError,
    lib.E_COUNT: TypeError,
    lib.E_TYPE: TypeError,
    lib.E_RANGE: ValueError,
    lib.E_MEMORY: MemoryError,
}


def error_of(status, doing):
    """The exception for a status other than OK."""
    if status == lib.E_NULL:
        return PixvaneError("%s: the control is closed" % doing)
    text = lib.status_text(status).decode("utf-8")
    return _RAISED.get(status, PixvaneError)("%s: %s" % (doing, text))


def check(status, doing):
    if status:
        raise error_of(status, doing)
