"""Runs the program on xfce4-panel, over made-up hardware whose values change all the time, at ten
readings a second; prints a line of figures every half minute. Status 1 when the program has grown:
in the last third of the time its private memory must be level, and after the first third it may
have no more or fewer descriptors and threads."""
import argparse
import os
import sys
import time
from itertools import count
from pathlib import Path
from typing import NamedTuple

from made_up_hardware import Hardware
from measuring import (AccessCounter, is_over, memory_of, release_build, start_program,
                       threads_of)
from private_desktop import Desktop

INTERVAL = 0.1          # seconds between two readings of the program
CHANGE_EVERY = 0.05     # seconds, so that no two readings are equal
LINE_EVERY = 30.0       # seconds
LEVEL = 64              # KiB


class Figures(NamedTuple):
    seconds: int
    readings: int
    private_dirty: int      # KiB
    rss: int                # KiB
    descriptors: int
    threads: int


def figures_of(pid, seconds, readings):
    memory = memory_of(pid)
    return Figures(round(seconds), readings, memory["Private_Dirty"], memory["Rss"],
                   len(os.listdir(f"/proc/{pid}/fd")), len(threads_of(pid)))


def change(hardware, step):
    """Through all tiers and back, so that text and colour of the title change."""
    percent = 40 + abs(step % 120 - 60)
    hardware.set_memory(percent)
    hardware.run_processor(percent, 100 - percent)
    hardware.write("class/hwmon/hwmon0/fan1_input", f"{percent * 50}\n")


def soak(desktop, program, seconds):
    """The figures of a run, while they are printed."""
    hardware = Hardware(desktop.folder / "hardware")
    hardware.set_fan(1850)
    readings = AccessCounter(hardware.folder / "meminfo")
    process = start_program(desktop, [*hardware.command_prefix(), program],
                            updateInterval=INTERVAL)

    lines = []
    print("\t".join(Figures._fields), flush=True)
    start = time.monotonic()
    for step in count():
        change(hardware, step)
        readings.update()
        elapsed = time.monotonic() - start
        is_over(desktop, process)
        if elapsed >= LINE_EVERY * (len(lines) + 1):
            lines.append(figures_of(process.pid, elapsed, readings.total))
            print("\t".join(map(str, lines[-1])), flush=True)
        if elapsed >= seconds:
            break
        time.sleep(CHANGE_EVERY)
    desktop.end(process)
    return lines


def growth(lines):
    """What has grown, in words."""
    later, last = lines[len(lines) // 3:], lines[len(lines) * 2 // 3:]
    memory = [line.private_dirty for line in last]
    found = []
    if max(memory) - min(memory) > LEVEL:
        found.append(f"private memory between {min(memory)} and {max(memory)} KiB")
    for name in ("descriptors", "threads"):
        seen = {getattr(line, name) for line in later}
        if len(seen) > 1:
            found.append(f"{name}: {', '.join(map(str, sorted(seen)))}")
    return found


def main():
    parser = argparse.ArgumentParser(prog="soak", description=__doc__)
    parser.add_argument("minutes", type=float, help="3 or more")
    parser.add_argument("--program", metavar="FILE", help="another than the release build")
    wanted = parser.parse_args()
    if not wanted.minutes >= 3:
        parser.error("3 minutes or more, to have a third to compare")
    program = str(Path(wanted.program or release_build()).resolve())
    with Desktop() as desktop:
        desktop.start_panel("xfce4")
        desktop.wait_for_tray()
        lines = soak(desktop, program, wanted.minutes * 60)
    found = growth(lines)
    print("grown: " + "; ".join(found) if found else "level", flush=True)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
