"""What the load commands of an arm64 Mach-O file say."""

from __future__ import annotations

import re
import struct
from dataclasses import dataclass, field
from pathlib import Path

MAGIC_64 = 0xFEEDFACF
FAT = {0xCAFEBABE: ">5I", 0xCAFEBABF: ">2I2Q2I"}  # several processors in a file: how one is named
ARM64 = 0x0100000C
EXECUTABLE = 2
MACOS = 1
LIBRARY_COMMANDS = {0xC, 0x80000018, 0x8000001F}  # plain, weak, re-exported
RPATH = 0x8000001C
BUILD_VERSION = 0x32


class NotMachO(Exception):
    pass


@dataclass
class MachO:
    file_type: int
    minimum_system: str | None = None  # None: not for macOS
    libraries: list[str] = field(default_factory=list)
    rpaths: list[str] = field(default_factory=list)
    absolute_paths: list[str] = field(default_factory=list)  # in any load command


def is_mach_o(path: Path) -> bool:
    """Of any kind and for any processor; it need not be whole."""
    with path.open("rb") as file:
        start = file.read(4)
    return int.from_bytes(start, "little") in (MAGIC_64, 0xFEEDFACE) \
        or int.from_bytes(start, "big") in FAT


def read(path: Path) -> MachO:
    """Raises NotMachO for anything but a whole 64-bit file for arm64, alone or with others."""
    data = path.read_bytes()
    try:
        data = _for_arm64(data)
        magic, cpu, _, file_type, count, size = struct.unpack_from("<6I", data)
        if magic != MAGIC_64 or cpu != ARM64:
            raise NotMachO(f"{path}: not a Mach-O file for arm64")
        commands = data[32:32 + size]
        found = MachO(file_type)
        at = 0
        for _ in range(count):
            command, length = struct.unpack_from("<2I", commands, at)
            body = commands[at:at + length]
            if length < 8 or len(body) != length:
                raise NotMachO(f"{path}: a load command is cut off")
            if command in LIBRARY_COMMANDS:
                found.libraries.append(_text(body))
            elif command == RPATH:
                found.rpaths.append(_text(body))
            elif command == BUILD_VERSION:
                platform, oldest = struct.unpack_from("<2I", body, 8)
                if platform == MACOS:
                    found.minimum_system = f"{oldest >> 16}.{oldest >> 8 & 0xFF}"
            at += length
    except struct.error as error:
        raise NotMachO(f"{path}: {error}") from error
    paths = re.findall(rb"(?<![ -~])/[\w.+ -]+/[ -~]*", commands)
    found.absolute_paths = [one.decode("ascii") for one in paths]
    return found


def _for_arm64(data: bytes) -> bytes:
    magic, count = struct.unpack_from(">2I", data)
    layout = FAT.get(magic)
    for number in range(count) if layout else ():
        at = 8 + number * struct.calcsize(layout)
        cpu, _, start, size, *_ = struct.unpack_from(layout, data, at)
        if cpu == ARM64:
            return data[start:start + size]
    return data


def _text(body: bytes) -> str:
    start, = struct.unpack_from("<I", body, 8)
    return body[start:].split(b"\0")[0].decode("utf-8", "replace")
