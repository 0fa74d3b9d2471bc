#!/usr/bin/env python3
"""Writes Meterkin.icns anew from the program's drawing:  packaging/macOS/make_icon.py
Needs rsvg-convert (the Debian package librsvg2-bin)."""

import re
import struct
import subprocess
import sys
import zlib
from pathlib import Path

HERE = Path(__file__).resolve().parent
DRAWING = HERE.parent / "icons" / "org.meterkin.Meterkin.svg"
ICON = HERE / "Meterkin.icns"

# On the system's grid the plate takes 824 of 1024 pixels; in the drawing it takes 112 of 128.
SIDE = 112 * 1024 / 824
MARGIN = (SIDE - 128) / 2
SHADOW = """
  <filter id="soft" x="-20%" y="-20%" width="140%" height="140%"><feGaussianBlur stdDeviation="1.4"/></filter>
  <rect x="8" y="9.4" width="112" height="112" rx="26" opacity="0.35" filter="url(#soft)"/>"""

LARGEST_TIGHT = 64  # pixels
MAPS = [("is32", "s8mk", 16), ("il32", "l8mk", 32)]
PICTURES = [("ic11", 32), ("ic12", 64), ("ic07", 128), ("ic13", 256), ("ic08", 256),
            ("ic14", 512), ("ic09", 512), ("ic10", 1024)]


def drawing(size: int) -> str:
    """Small icons keep the drawing's own margin: its edges then fall on whole pixels."""
    text = DRAWING.read_text(encoding="utf-8")
    if size <= LARGEST_TIGHT:
        return text
    head = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="{-MARGIN} {-MARGIN} {SIDE} {SIDE}">'
    return re.sub(r"<svg[^>]*>", lambda _: head + SHADOW, text, count=1)


def png(size: int) -> bytes:
    return subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size)],
                          input=drawing(size).encode(), stdout=subprocess.PIPE, check=True).stdout


def planes(picture: bytes, size: int) -> list[bytes]:
    """The red, green, blue and opacity of a PNG with eight bits each."""
    packed, at = b"", 8
    while at < len(picture):
        length, kind = struct.unpack_from(">I4s", picture, at)
        if kind == b"IDAT":
            packed += picture[at + 8:at + 8 + length]
        at += 12 + length
    assert picture[24:29] == b"\x08\x06\0\0\0", "not plain RGBA"

    rows, stride, above = zlib.decompress(packed), 4 * size, bytes(4 * size)
    pixels = bytearray()
    for y in range(size):
        filtering, *row = rows[y * (stride + 1):(y + 1) * (stride + 1)]
        for x in range(stride):
            left, corner = (row[x - 4], above[x - 4]) if x >= 4 else (0, 0)
            up, guess = above[x], left + above[x] - corner
            nearest = min((left, up, corner), key=lambda value: abs(guess - value))
            row[x] = (row[x] + (0, left, up, (left + up) // 2, nearest)[filtering]) & 0xff
        above = bytes(row)
        pixels += above
    return [bytes(pixels[channel::4]) for channel in range(4)]


def literal(plane: bytes) -> bytes:
    """A plane in the format's packing, as chunks of 128 values that are all spelled out: some
    versions of the system lose values when a plane ends in a repetition."""
    return b"".join(bytes([len(plane[at:at + 128]) - 1]) + plane[at:at + 128]
                    for at in range(0, len(plane), 128))


def element(kind: str, data: bytes) -> bytes:
    return kind.encode() + struct.pack(">I", 8 + len(data)) + data


def main() -> int:
    pictures = {size: png(size) for size in {size for *_, size in MAPS + PICTURES}}
    body = b""
    # The system takes the two smallest sizes of a bundle's icon from bare maps only, not from PNGs.
    for colours, mask, size in MAPS:
        *red_green_blue, opacity = planes(pictures[size], size)
        body += element(colours, b"".join(map(literal, red_green_blue))) + element(mask, opacity)
    for kind, size in PICTURES:
        body += element(kind, pictures[size])
    ICON.write_bytes(element("icns", body))
    print(f"{ICON.name}: {8 + len(body)} bytes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
