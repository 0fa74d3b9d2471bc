"""A pointer on a headless sway, which has no other. By hand: no packaged tool moves a virtual one."""
import socket
import struct

LEFT = 0x110
MANAGER = b"zwlr_virtual_pointer_manager_v1"
DISPLAY, REGISTRY, DONE, OURS, POINTER = range(1, 6)    # numbers of objects


def text(value):
    """With its length, the closing zero and what fills four bytes."""
    return struct.pack("=I", len(value) + 1) + value + b"\0" * (4 - len(value) % 4)


class WaylandPointer:
    def __init__(self, display, size):
        self.size = size
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(10)
        self.socket.connect(display)
        self.send(DISPLAY, 1, REGISTRY)
        self.send(DISPLAY, 0, DONE)
        name = next(body[:4] for body in self.globals() if body[8:].startswith(MANAGER))
        self.send(REGISTRY, 0, name, text(MANAGER), 1, OURS)
        self.send(OURS, 0, 0, POINTER)

    def send(self, target, request, *words):
        body = b"".join(word if isinstance(word, bytes) else struct.pack("=I", word)
                        for word in words)
        self.socket.sendall(struct.pack("=II", target, (len(body) + 8) << 16 | request) + body)

    def globals(self):
        with self.socket.makefile("rb") as stream:
            while True:
                target, head = struct.unpack("=II", stream.read(8))
                body = stream.read((head >> 16) - 8)
                if target == DONE:
                    return
                if target == REGISTRY:
                    yield body

    def click(self, x, y):
        self.send(POINTER, 1, 0, x, y, *self.size)
        self.send(POINTER, 4)
        for is_down in (True, False):
            self.send(POINTER, 2, 0, LEFT, is_down)
            self.send(POINTER, 4)
