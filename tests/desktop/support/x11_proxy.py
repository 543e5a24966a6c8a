"""Stands between a program and its X server and writes down what is asked.

Usage: x11_proxy.py

Serves the display of the environment under another number, which is the first
line on standard output. Every request is a line after that: the time of
time.monotonic(), the number of the connection and the request's major and minor
opcodes.
"""

import array
import os
import selectors
import socket
import sys
import time

BUFFER = 1 << 16
# A request for shared memory carries up to two file descriptors.
DESCRIPTORS = socket.CMSG_SPACE(16 * array.array("i").itemsize)


# The first display number that no server takes by default.
FIRST_DISPLAY = 10_000


def address(number):
    """The address of a display's socket, which needs no file."""
    return f"\0/tmp/.X11-unix/X{number}"


class Requests:
    """Finds the requests in a client's data."""

    def __init__(self, number):
        self._number = number
        self._bytes = bytearray()
        self._order = None

    def feed(self, data):
        self._bytes += data
        if self._order is None and not self._take_setup():
            return
        while self._take_request():
            pass

    def _number_at(self, start, size):
        return int.from_bytes(self._bytes[start : start + size], self._order)

    def _take_setup(self):
        if len(self._bytes) < 12:
            return False
        self._order = "little" if self._bytes[:1] == b"l" else "big"
        name, data = (-(-self._number_at(start, 2) // 4) * 4 for start in (6, 8))
        if len(self._bytes) < 12 + name + data:
            self._order = None
            return False
        del self._bytes[: 12 + name + data]
        return True

    def _take_request(self):
        if len(self._bytes) < 4:
            return False
        length = self._number_at(2, 2)
        if length == 0:
            # A BIG-REQUESTS request: the length follows.
            if len(self._bytes) < 8:
                return False
            length = self._number_at(4, 4)
        if len(self._bytes) < 4 * length:
            return False
        print(f"{time.monotonic():.6f} {self._number} {self._bytes[0]} {self._bytes[1]}", flush=True)
        del self._bytes[: 4 * length]
        return True


class Relay:
    def __init__(self, number, server_number):
        self._server_address = address(server_number)
        self._selector = selectors.DefaultSelector()
        self._listener = socket.socket(socket.AF_UNIX)
        self._listener.bind(address(number))
        self._listener.listen()
        self._selector.register(self._listener, selectors.EVENT_READ, self._accept)
        self._connections = 0

    def run(self):
        while True:
            for key, _ in self._selector.select():
                key.data()

    def _accept(self):
        client, _ = self._listener.accept()
        server = socket.socket(socket.AF_UNIX)
        server.connect(self._server_address)
        self._connections += 1
        requests = Requests(self._connections)
        for here, there, feed in ((client, server, requests.feed), (server, client, None)):
            self._selector.register(
                here,
                selectors.EVENT_READ,
                lambda here=here, there=there, feed=feed: self._pass_on(here, there, feed),
            )

    def _pass_on(self, here, there, feed):
        try:
            data, extra, _, _ = here.recvmsg(BUFFER, DESCRIPTORS)
            if data:
                sent = there.sendmsg([data], extra)
                there.sendall(data[sent:])
        except (BrokenPipeError, ConnectionResetError):
            data = b""
        for level, kind, payload in extra if data else ():
            if (level, kind) == (socket.SOL_SOCKET, socket.SCM_RIGHTS):
                for descriptor in array.array("i", payload):
                    os.close(descriptor)
        if not data:
            for end in (here, there):
                self._selector.unregister(end)
                end.close()
        elif feed:
            feed(data)


def main():
    # The process's number, so that two proxies never want the same display.
    number = FIRST_DISPLAY + os.getpid()
    relay = Relay(number, os.environ["DISPLAY"].removeprefix(":"))
    print(number, flush=True)
    relay.run()


if __name__ == "__main__":
    main()
