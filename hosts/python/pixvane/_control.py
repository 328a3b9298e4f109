"""The control: its members, made from the table, its events, its end."""
# SPDX-License-Identifier: MIT
import inspect
import keyword
from ctypes import byref, c_int32, c_void_p

from . import _library as lib
from ._calls import Subscription, call, dispatch
from ._errors import check
from ._macros import macro_steps
from ._table import documentation, members
from ._values import PUT, result
from ._window import Window


class Pixvane:
    """An image-editing control without a window of its own: one picture, its history and its view.

    Members have their published names: methods are called with positional arguments, properties are
    attributes. Colours are integers 0x00BBGGRR, arrays are lists, bytes come and go as bytes. The client
    size is 0 x 0 until `window.resize`; resize before you load.

    One thread at a time may use a control; any number of controls may live side by side.
    """

    __slots__ = ("_control", "_subscriptions", "__weakref__")

    def __new__(cls, *arguments, **keywords):
        self = super().__new__(cls)
        self._control = None
        self._subscriptions = []
        control = c_void_p()
        check(lib.create(None, byref(control)), "Pixvane")
        self._control = control.value
        return self

    def __init__(self):
        pass

    def close(self):
        """Frees the picture, its history and the control; every later call raises PixvaneError."""
        control = self._control
        if control is not None:
            check(lib.free(control), "close")
            self._control = None
            self._subscriptions.clear()

    def __del__(self, free=lib.free):
        # May run on any thread and while the interpreter ends; nobody else can be inside the control then.
        if getattr(self, "_control", None) is not None:
            free(self._control)
            self._control = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def __reduce__(self):
        raise TypeError("a Pixvane control can be neither copied nor pickled")

    def __repr__(self):
        if self._control is None:
            return "<Pixvane, closed>"
        return "<Pixvane at 0x%x>" % self._control

    @property
    def window(self):
        """The window that the control is shown in: what happens to it, and what it shows."""
        return Window(self)

    def macro_steps(self):
        """The steps of the macro, as a list of MacroStep."""
        return macro_steps(self._control)

    def on(self, event, handler):
        """Calls `handler` with the event's arguments whenever `event` fires, in the order of subscription.

        What a handler raises is raised again by the call that made the event fire.
        """
        if not callable(handler):
            raise TypeError("a handler must be callable, not %s" % type(handler).__name__)
        subscription = Subscription(_event_name(event), handler)
        number = c_int32()
        doing = "on(%r)" % event
        call(doing, lib.subscribe, self._control, event.encode(), dispatch, subscription.key, byref(number))
        subscription.id = number.value
        self._subscriptions.append(subscription)

    def off(self, event, handler=None):
        """Ends what `on` began: for this handler, or for all handlers of the event."""
        _event_name(event)
        for subscription in list(self._subscriptions):
            if subscription.event == event and (handler is None or subscription.handler == handler):
                call("off(%r)" % event, lib.unsubscribe, self._control, subscription.id)
                self._subscriptions.remove(subscription)


_events = {}
_commands = {}


def _event_name(event):
    if not isinstance(event, str):
        raise TypeError("an event's name must be a string, not %s" % type(event).__name__)
    if event not in _events:
        raise ValueError("no event named %r; there are: %s" % (event, ", ".join(sorted(_events))))
    return event


def _caller(member, arguments):
    """A function that invokes `member` with as many values as it has `arguments`."""
    name, count = member.name, len(arguments)
    handle = lib.find_member(name.encode("utf-8"))
    array_of = lib.Value * count
    puts = [(PUT[a.kind], "%s: %s" % (name, a.name) if a.name != name else name) for a in arguments]
    invoke_handle = lib.invoke_handle

    def invoke(self, *values):
        array, held, returned = array_of(), [], lib.Value()
        for slot, (put, where), value in zip(array, puts, values):
            put(slot, value, where, held)
        call(name, invoke_handle, self._control, handle, array, count, byref(returned))
        return result(self._control, returned, name)

    return invoke


def _method(member):
    if member.arguments and member.arguments[-1].kind == "values":
        return _open_method(member)
    invoke = _caller(member, member.arguments)
    count = len(member.arguments)

    def method(self, *values):
        if len(values) != count:
            _check_count(member, values)
        return invoke(self, *values)

    return _described(method, member)


def _open_method(member):
    """A method whose last argument stands for those of the command that the first one names."""
    leading, callers = member.arguments[:-1], {}

    def method(self, *values):
        if not values:
            raise TypeError("%s takes the name of a command and its arguments" % member.name)
        command = _commands.get(values[0]) if isinstance(values[0], str) else None
        if command is None:
            raise AttributeError("%s: no command named %r" % (member.name, values[0]))
        _check_count(command, values[1:])
        if command.name not in callers:
            callers[command.name] = _caller(member, leading + command.arguments)
        return callers[command.name](self, *values)

    return _described(method, member)


def _check_count(member, values):
    count = len(member.arguments)
    if len(values) != count:
        wanted = ", ".join(a.name for a in member.arguments)
        plural = "" if count == 1 else "s"
        raise TypeError("%s(%s) takes %d argument%s, not %d" % (member.name, wanted, count, plural, len(values)))


def _described(method, member):
    parameters = [inspect.Parameter("self", inspect.Parameter.POSITIONAL_ONLY)]
    for a in member.arguments:
        kind = inspect.Parameter.VAR_POSITIONAL if a.kind == "values" else inspect.Parameter.POSITIONAL_ONLY
        parameters.append(inspect.Parameter(a.name + "_" * keyword.iskeyword(a.name), kind))
    method.__signature__ = inspect.Signature(parameters)
    method.__name__ = member.name
    method.__qualname__ = "Pixvane." + member.name
    method.__doc__ = documentation(member)
    return method


def _property(member):
    get = _caller(member, ())
    put = None
    if member.writable:
        put_value = _caller(member, member.arguments)

        def put(self, value):
            put_value(self, value)

    return property(get, put, doc=documentation(member))


def _add_members():
    for member in members():
        if member.type == "event":
            _events[member.name] = member
        else:
            if member.edits:
                _commands[member.name] = member
            make = _method if member.type == "method" else _property
            setattr(Pixvane, member.name, make(member))


_add_members()
