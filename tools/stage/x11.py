# SPDX-License-Identifier: MIT
"""As much of an X client as it takes to see that a window manager and a compositor work. It calls the X library itself,
since every test that has a display waits for this to start: another 3 ms, where a toolkit's module takes 100."""

import ctypes

_INPUT_OUTPUT = 1
_ANY_TYPE = 0
_SOME_VALUES = 1024


class _Cookie(ctypes.Structure):
    _fields_ = [("sequence", ctypes.c_uint)]


class _Screens(ctypes.Structure):
    _fields_ = [("first", ctypes.POINTER(ctypes.c_uint32)), ("left", ctypes.c_int), ("index", ctypes.c_int)]


class Client:
    """A connection to a display. Raises ConnectionError when there is none, or none any more."""

    def __init__(self, display):
        self._xcb = ctypes.CDLL("libxcb.so.1")
        self._free = ctypes.CDLL(None).free
        for name in ("xcb_connect", "xcb_get_setup"):
            getattr(self._xcb, name).restype = ctypes.c_void_p
        self._xcb.xcb_setup_roots_iterator.restype = _Screens
        self._xcb.xcb_generate_id.restype = ctypes.c_uint32
        self._connection = ctypes.c_void_p(self._xcb.xcb_connect(display.encode(), None))
        if self._xcb.xcb_connection_has_error(self._connection):
            raise ConnectionError(f"no display {display}")
        setup = ctypes.c_void_p(self._xcb.xcb_get_setup(self._connection))
        # The first word of a screen's record is its root window.
        self._root = self._xcb.xcb_setup_roots_iterator(setup).first[0]
        self._atoms = {}

    def close(self):
        self._xcb.xcb_disconnect(self._connection)

    def owner_of(self, selection):
        """The window that owns a selection, or 0."""
        return self._ask("xcb_get_selection_owner", self._atom(selection))[2]

    def root_values(self, name):
        """The numbers of a property of the root window; none where it has no such property."""
        reply = self._ask("xcb_get_property", 0, self._root, self._atom(name), _ANY_TYPE, 0, _SOME_VALUES)
        count = reply[4]
        return reply[8:8 + count]

    def show_window(self):
        """Shows a small window; tells its number."""
        window = self._xcb.xcb_generate_id(self._connection)
        self._xcb.xcb_create_window(self._connection, 0, window, self._root, 0, 0, 10, 10, 0, _INPUT_OUTPUT, 0, 0, None)
        self._xcb.xcb_map_window(self._connection, window)
        self._xcb.xcb_flush(self._connection)
        return window

    def destroy_window(self, window):
        self._xcb.xcb_destroy_window(self._connection, window)
        self._xcb.xcb_flush(self._connection)

    def _atom(self, name):
        if name not in self._atoms:
            self._atoms[name] = self._ask("xcb_intern_atom", 0, len(name), name.encode())[2]
        return self._atoms[name]

    def _ask(self, request, *arguments):
        """The words of 32 bits of the reply to a request."""
        send, receive = (getattr(self._xcb, name) for name in (request, request + "_reply"))
        send.restype = _Cookie
        receive.restype = ctypes.c_void_p
        reply = receive(self._connection, send(self._connection, *arguments), None)
        if not reply:
            raise ConnectionError("the display has gone")
        try:
            # A reply's second word tells how many more it has than the eight that each has.
            words = 8 + ctypes.c_uint32.from_address(reply + 4).value
            return list((ctypes.c_uint32 * words).from_address(reply))
        finally:
            self._free(ctypes.c_void_p(reply))
