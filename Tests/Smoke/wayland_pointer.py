"""A pointer of our own on a Wayland compositor that lets clients have virtual ones, as sway does: a
headless one has no other. By hand, for no tool of the distribution does it."""
import socket
import struct

LEFT = 0x110
MANAGER = b"zwlr_virtual_pointer_manager_v1"
REGISTRY, DONE, OURS, POINTER = 2, 3, 4, 5      # numbers of objects; 1 is the display


def text(value):
    """With its length, the closing zero and what fills four bytes."""
    padded = value + b"\0" * (4 - len(value) % 4)
    return struct.pack("=I", len(value) + 1) + padded


class WaylandPointer:
    def __init__(self, display, size):
        self.size = size
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(10)
        self.socket.connect(display)
        self.send(1, 1, struct.pack("=I", REGISTRY))
        self.send(1, 0, struct.pack("=I", DONE))
        name = next(struct.unpack_from("=I", body)[0] for opcode, body in self.globals()
                    if opcode == 0 and body[8:8 + len(MANAGER)] == MANAGER)
        self.send(REGISTRY, 0, struct.pack("=I", name) + text(MANAGER)
                  + struct.pack("=II", 1, OURS))
        self.send(OURS, 0, struct.pack("=II", 0, POINTER))

    def send(self, target, opcode, body=b""):
        self.socket.sendall(struct.pack("=II", target, (len(body) + 8) << 16 | opcode) + body)

    def globals(self):
        """The registry's messages, until it has told all."""
        stream = self.socket.makefile("rb")
        found = []
        while True:
            target, head = struct.unpack("=II", stream.read(8))
            body = stream.read((head >> 16) - 8)
            if target == DONE:
                return found
            if target == REGISTRY:
                found.append((head & 0xffff, body))

    def move(self, x, y):
        self.send(POINTER, 1, struct.pack("=IIIII", 0, x, y, *self.size))
        self.send(POINTER, 4)

    def press(self, is_down, button=LEFT):
        self.send(POINTER, 2, struct.pack("=III", 0, button, is_down))
        self.send(POINTER, 4)

    def click(self, x, y):
        self.move(x, y)
        self.press(True)
        self.press(False)

    def close(self):
        self.socket.close()
