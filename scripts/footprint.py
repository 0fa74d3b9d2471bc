"""Measures what the program costs on private desktops, beside a process that only sleeps, reads and
parses (the floor), and prints it beside its budgets as one table. Status 1 when one is exceeded."""
import argparse
import shutil
import statistics
import subprocess
import sys
import time
from contextlib import ExitStack
from pathlib import Path
from typing import NamedTuple, Optional

from made_up_hardware import Hardware
from measuring import (AccessCounter, is_over, memory_of, processor_time_of, release_build,
                       start_program, switches_of, threads_of, title_window)
from panels import PANELS, XEMBED, is_on_wayland
from peers import start_peers
from private_desktop import Desktop
from x_display import Rect

INTERVAL = 3.0          # seconds between two readings, of all that is measured in the window
SETTLE = 40.0           # seconds until what the start took has been given back
STARTS = 7              # the first one only fills caches
OPENINGS = 20           # of the dashboard
AFTER_CLOSING = 30.0    # seconds
VIVID = 60              # how far the colours of a pixel of the title are apart

COUNT_INTERVAL = 0.2
COUNTED_FROM, COUNTED = 20, 50      # readings
COUNTS = 3
COUNT_LENIENCE = 1.1


class Row(NamedTuple):
    what: str
    most: Optional[float] = None
    decimals: int = 0


ROWS = {
    "instructions": Row("instructions a reading, all threads", 12000),
    "time": Row("CPU a reading, µs"),
    "floors": Row("CPU a reading ÷ the floor's", 1.8, 1),
    "i3statuses": Row("CPU a reading ÷ i3status's", 0.75, 2),
    "xfce4": Row("CPU a reading ÷ the floor's, title changing in an X11 tray", 4, 1),
    "lxqt": Row("CPU a reading ÷ the floor's, title changing on LXQt", 6, 1),
    "switches": Row("context switches a reading", 1.3, 1),
    "threads": Row("threads"),
    "dirty": Row("private dirty memory, KiB", 2900),
    "rss": Row("RSS, MiB", 27, 1),
    "closed once": Row("private dirty, dashboard closed for half a minute, KiB", 6400),
    "closed often": Row(f"private dirty, the same the {OPENINGS}th time, KiB", 6400),
    "start": Row("start → first reading painted in the panel, ms", 60),
    "cold": Row("click → first frame of the dashboard painted, ms", 90),
    "later": Row("click → first frame of the dashboard painted, later, ms", 10),
}


def open_desktop(stack, panel):
    desktop = stack.enter_context(Desktop(wayland=is_on_wayland(panel)))
    # As on every real one; the program keeps looking for a system bus that is missing.
    desktop.environment["DBUS_SYSTEM_BUS_ADDRESS"] = \
        desktop.environment["DBUS_SESSION_BUS_ADDRESS"]
    desktop.start_panel(panel)
    desktop.wait_for_tray()
    return desktop


# --- instructions ------------------------------------------------------------------------------

def instructions_a_reading(program):
    """Counted in the real program in Xfce's tray, over made-up hardware whose values change below
    what is seen of them."""
    if not shutil.which("valgrind"):
        raise FileNotFoundError("valgrind is not installed")
    with ExitStack() as stack:
        desktop = open_desktop(stack, "xfce4")
        hardware = Hardware(desktop.folder / "hardware")
        readings = AccessCounter(hardware.folder / "meminfo")
        out = desktop.folder / "counted"
        process = start_program(
            desktop, [*hardware.command_prefix(), "valgrind", "--tool=callgrind",
                      f"--callgrind-out-file={out}", f"--vgdb-prefix={desktop.folder}/vgdb",
                      program], updateInterval=COUNT_INTERVAL)
        counts = []
        for number in range(COUNTS + 1):
            first = readings.total
            wanted = first + (COUNTED if number else COUNTED_FROM)
            while readings.total < wanted:
                is_over(desktop, process)
                time.sleep(COUNT_INTERVAL / 10)
                readings.update()
                hardware.set_memory(42.1 + readings.total % 7 / 100)
                hardware.run_processor(10_000 + readings.total % 7, 90_000)
            time.sleep(COUNT_INTERVAL / 2)      # now between two readings
            subprocess.run(["vgdb", f"--vgdb-prefix={desktop.folder}/vgdb",
                            f"--pid={process.pid}", "dump"], check=True, capture_output=True)
            text = Path(f"{out}.{number + 1}").read_text()
            counts.append(int(text.rpartition("\ntotals:")[2].split()[0])
                          / (readings.total - first))
        return statistics.median(counts[1:])    # a panel may move its items once


# --- start and dashboard -----------------------------------------------------------------------

def title_pixels(desktop, rect):
    """How many pixels of the title have its colour."""
    return sum(max(pixel) - min(pixel) > VIVID for pixel in desktop.screenshot(rect).pixels())


def is_even(image):
    return image.rgb == image.rgb[:3] * (image.width * image.height)


class Dashboard:
    """Opens and closes it with clicks on a title that stands in an X11 tray."""

    def __init__(self, desktop):
        self.x = desktop.x
        self.desktop = desktop
        item = title_window(desktop).rect
        self.item = (item.x + item.width // 2, item.y + item.height // 2)
        screen = self.x.windows()[0].rect
        self.away = (screen.width // 4, screen.height // 2)
        # a strip right of the middle of where it drops, without the gap to the panel
        top = item.y + item.height + 40 if item.y < screen.height // 2 else item.y - 240
        self.strip = Rect(self.item[0] - 20, top, 40, 200)
        self.x.point_at(*self.away)

    def open(self):
        """Milliseconds from the click, and the pointer's coming, to the first frame."""
        self.desktop.wait(lambda: is_even(self.x.image(self.strip)), what="a bare background")
        begin = time.monotonic()
        self.x.click(*self.item)
        self.desktop.wait(lambda: not is_even(self.x.image(self.strip)), what="the dashboard",
                          pause=0)
        return 1000 * (time.monotonic() - begin)

    def open_and_close(self):
        milliseconds = self.open()
        time.sleep(1)
        self.x.click(*self.away)
        time.sleep(1)
        return milliseconds


def measure_starts(desktop, program):
    """Medians over several processes."""
    starts, clicks = [], []
    place = pixels = None
    for _ in range(STARTS):
        begin = time.monotonic()
        process = desktop.spawn([program], "program")
        if place:
            # the dash that stands there before the first reading has far less
            desktop.wait(lambda: title_pixels(desktop, place) > pixels / 2, what="the title",
                         pause=0)
            starts.append(1000 * (time.monotonic() - begin))
        time.sleep(2)
        place = title_window(desktop).rect
        pixels = title_pixels(desktop, place)
        clicks.append(Dashboard(desktop).open_and_close())
        desktop.end(process)
        time.sleep(0.5)
    return {"start": statistics.median(starts), "cold": statistics.median(clicks[1:])}


def measure_dashboard(desktop, pid):
    """The first opening and the twentieth, and how fast those between are."""
    dashboard = Dashboard(desktop)
    dashboard.open_and_close()
    time.sleep(AFTER_CLOSING)
    once = memory_of(pid)["Private_Dirty"]
    again = [dashboard.open_and_close() for _ in range(OPENINGS - 1)]
    time.sleep(AFTER_CLOSING)
    return {"closed once": once, "closed often": memory_of(pid)["Private_Dirty"],
            "later": statistics.median(again[1:])}


# --- the window --------------------------------------------------------------------------------

def measure_together(processes, seconds, changing):
    """A column of the table for each process, while memory changes for those that see it."""
    def use():
        return {name: (processor_time_of(pid), switches_of(pid)) for name, pid in processes.items()}
    before = use()
    begin = time.monotonic()
    readings = round(seconds / INTERVAL)
    for number in range(readings):
        changing.set_memory(42 + number % 10)
        time.sleep(max(0, begin + (number + 1) * INTERVAL - time.monotonic()))
    columns = {}
    for name, after in use().items():
        nanoseconds, switches = (now - then for now, then in zip(after, before[name]))
        memory = memory_of(processes[name])
        columns[name] = {"time": nanoseconds / 1000 / readings, "switches": switches / readings,
                         "threads": len(threads_of(processes[name])),
                         "dirty": memory["Private_Dirty"], "rss": memory["Rss"] / 1024}
    for column in columns.values():
        column["floors"] = column["time"] / columns["floor"]["time"]
    return columns


def measure(program, wanted):
    """All columns of the table."""
    with ExitStack() as stack:
        quiet = open_desktop(stack, wanted.panel)
        in_x11 = PANELS[wanted.panel].tray == XEMBED
        own = measure_starts(quiet, program) if in_x11 else {}
        # The title of a fan that has gone never changes, while all else that is read is real.
        fan = Hardware(quiet.folder / "fan")
        fan.set_fan(1850)
        process = start_program(quiet, [*fan.command_prefix("class"), program],
                                menuBarMetric="Fan Speed")
        fan.lose_fan()
        changing = Hardware(quiet.folder / "changing")
        made_up = changing.command_prefix("meminfo")
        floor = [str(quiet.folder / "floor"), f"{INTERVAL:g}"]
        subprocess.run(["c++", "-O2", "-Wl,--as-needed", "-o", floor[0],
                        Path(__file__).with_name("floor.cpp")], check=True)
        processes = {"Meterkin": process.pid, "floor": quiet.spawn(floor, "floor").pid,
                     "made up": quiet.spawn([*made_up, *floor], "floor").pid}
        for panel in ("xfce4", "lxqt"):
            desktop = open_desktop(stack, panel)
            processes[panel] = start_program(desktop, [*made_up, program]).pid
            if panel == "xfce4" and wanted.peers:
                processes |= start_peers(desktop)
        time.sleep(SETTLE)
        columns = measure_together(processes, wanted.window, changing)
        own |= columns["Meterkin"]
        # The kernel reads real files slower than made-up ones: add the difference of two floors.
        real = columns["floor"]["time"]
        slower = real - columns.pop("made up")["time"]
        for panel in ("xfce4", "lxqt"):
            own[panel] = (columns.pop(panel)["time"] + slower) / real
        if "i3status" in columns:
            own["i3statuses"] = own["time"] / columns["i3status"]["time"]
        if in_x11:
            own |= measure_dashboard(quiet, process.pid)
        return columns | {"Meterkin": own}


# --- the table ---------------------------------------------------------------------------------

def exceeded(key, value):
    most = ROWS[key].most
    return most is not None and value > most * (COUNT_LENIENCE if key == "instructions" else 1)


def print_table(columns):
    """As Markdown has it. Returns whether every budget is kept."""
    def text(value, decimals):
        return "" if value is None else f"{value:,.{decimals}f}"
    others = [name for name in columns if name != "Meterkin"]
    lines = [["", "at most", "Meterkin", "holds", *others]]
    broken = 0
    for key, row in ROWS.items():
        value = columns["Meterkin"].get(key)
        if value is None:
            continue
        broken += exceeded(key, value)
        lines.append([row.what, text(row.most, row.decimals), text(value, row.decimals),
                      "" if row.most is None else "no" if exceeded(key, value) else "yes",
                      *(text(columns[name].get(key), row.decimals) for name in others)])
    widths = [max(map(len, column)) for column in zip(*lines)]
    lines.insert(1, ["-" * widths[0], *("-" * (width - 1) + ":" for width in widths[1:])])
    for line in lines:
        print("| " + " | ".join([line[0].ljust(widths[0]), *map(str.rjust, line[1:], widths[1:])])
              + " |", flush=True)
    return broken == 0


def options():
    parser = argparse.ArgumentParser(prog="footprint", description=__doc__)
    parser.add_argument("--count", action="store_true",
                        help="only the instructions of a reading, which are nearly the same on "
                             "every machine at every time")
    parser.add_argument("--peers", action="store_true",
                        help="other monitors too, those that are installed")
    parser.add_argument("--window", type=float, default=120, metavar="SECONDS",
                        help="how long all are looked at together (120)")
    parser.add_argument("--panel", choices=PANELS, default="xfce4",
                        help="that the program stands in while its title does not change (xfce4); "
                             "start and dashboard are measured in X11 trays only")
    parser.add_argument("--program", metavar="FILE", help="another than the release build")
    return parser.parse_args()


def main():
    wanted = options()
    try:
        program = str(Path(wanted.program or release_build()).resolve())
        columns = {"Meterkin": {}} if wanted.count else measure(program, wanted)
        columns["Meterkin"]["instructions"] = instructions_a_reading(program)
    except (OSError, RuntimeError, subprocess.SubprocessError) as error:
        print(f"footprint: {error}", file=sys.stderr)
        return 2
    return 0 if print_table(columns) else 1


if __name__ == "__main__":
    sys.exit(main())
