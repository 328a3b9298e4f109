"""Calls into the library, and what handlers raise while one runs."""
# SPDX-License-Identifier: MIT
import itertools
import threading
import weakref

from . import _library as lib
from ._errors import error_of
from ._values import copied


class _Thread(threading.local):
    # What a handler raised during the call that runs on this thread.
    raised = None


_thread = _Thread()


def call(doing, function, *arguments):
    """Calls a function of the library; raises what a handler raised meanwhile, or what the status asks for.

    Calls nest, when a handler calls a control: each raises what was raised within it.
    """
    outer = _thread.raised
    _thread.raised = None
    try:
        status = function(*arguments)
    finally:
        raised = _thread.raised
        _thread.raised = outer
    if raised is not None:
        try:
            raise raised
        finally:
            raised = None  # the traceback holds this frame; don't let the frame hold the exception
    if status:
        raise error_of(status, doing)


class Subscription:
    """A handler of an event. Its control owns it; the library knows it by its number."""

    __slots__ = ("event", "handler", "key", "id", "__weakref__")

    def __init__(self, event, handler):
        self.event = event
        self.handler = handler
        self.key = next(_keys)
        self.id = None
        _subscriptions[self.key] = self


_keys = itertools.count(1)
# Weak, so that a handler that refers to its control does not keep the control alive.
_subscriptions = weakref.WeakValueDictionary()


@lib.EventHandler
def dispatch(key, arguments, count):
    """The one function that the library calls for every event of every control."""
    subscription = _subscriptions.get(key)
    if subscription is None:
        return
    try:
        subscription.handler(*[copied(arguments[i]) for i in range(count)])
    except BaseException as failure:
        if _thread.raised is not None:
            raise  # the first is the caller's; ctypes reports this one as unraisable
        _thread.raised = failure
