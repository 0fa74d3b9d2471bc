"""Takes the pictures of the README anew, from real runs of the program on made-up hardware:
docs/windows.png, its windows in a GNOME session at 200 %; docs/panels.png, its title in every kind
of panel, magnified twice."""
import argparse
import math
import subprocess
import sys
import tempfile
import threading
import time
from contextlib import ExitStack, contextmanager
from itertools import count
from pathlib import Path

from gnome_session import Gnome
from made_up_hardware import Hardware
from measuring import release_build
from panels import PANELS, is_on_wayland
from plasma_session import Plasma
from private_desktop import Desktop
from private_home import wait
from real_session import BACKGROUND
from screen_changes import around, new_vivid_pixels
from x_display import Rect

PROJECT = Path(__file__).resolve().parents[2]
DOCS = PROJECT / "docs"
SCALE = 2
SCREEN = (2000, 1500)
CORES = 8
READINGS = 60           # that the dashboard shows
INTERVAL = 0.1          # seconds between two, where no picture tells
STEP = 0.02             # seconds between two changes of the hardware
MARGIN = 24             # around a window, for its shadow
BACKDROP = "#%02x%02x%02x" % BACKGROUND
STATES = (              # of the title in a panel: settings, memory in percent, colour
    ({"menuBarMetric": "Memory"}, 42, "green"),
    ({"menuBarMetric": "Memory"}, 71, "yellow"),
    ({"menuBarMetric": "Fan Speed"}, 42, "red"))
CROP = (200, 32)
REST = 8                # looks that find the same title
UPRIGHT = 60            # at most, the width of a panel at the left
CAPTION = 110


class Machine:
    """Hardware with the ups and downs of a day's work, which go on by themselves."""

    def __init__(self, folder, memory=48, busy=30, fan=1850):
        """The numbers are what it hovers about."""
        self.hardware = Hardware(folder, CORES)
        self.memory, self.busy, self.fan = memory, busy, fan
        self.pass_time(0)
        self.is_over = threading.Event()
        self.life = threading.Thread(target=self.go_on)
        self.life.start()

    def go_on(self):
        for step in count():
            self.pass_time(step * STEP / INTERVAL)
            if self.is_over.wait(STEP):
                return

    def end(self):
        self.is_over.set()
        self.life.join()

    def pass_time(self, readings):
        wave = math.sin(readings / 9) + 0.4 * math.sin(readings / 3.1)
        self.hardware.set_memory(self.memory + 5 * wave)
        self.hardware.set_fan(round(self.fan + 160 * math.sin(readings / 11)))
        shares = [self.busy + 22 * math.sin(readings / 4 + 1.7 * core) + 14 * math.sin(core * core)
                  for core in range(CORES)]
        self.hardware.run_cores([(round(share), round(100 - share)) for share in
                                 (min(max(share, 2), 98) for share in shares)])


def write_settings(place, **settings):
    file = Path(place.environment["XDG_CONFIG_HOME"]) / "meterkin" / "meterkin.conf"
    file.parent.mkdir(parents=True, exist_ok=True)
    values = {"onboardingShown": "true"} | settings
    file.write_text("".join(f"{key}={value}\n" for key, value in values.items()))


def convert(*words):
    subprocess.run(["convert", *map(str, words)], check=True)


# --- windows -------------------------------------------------------------------------------------

class Windows:
    """The program's windows in a session whose compositor draws the shadows."""

    def __init__(self, session, program):
        self.session, self.program = session, program
        self.folder = session.folder / "pictures"
        self.folder.mkdir()
        session.environment["QT_SCALE_FACTOR"] = str(SCALE)

    @contextmanager
    def run(self, vitals=None, **settings):
        """The program on hardware of its own."""
        write_settings(self.session, **settings)
        machine = Machine(tempfile.mkdtemp(dir=self.session.folder), **(vitals or {}))
        try:
            process = self.session.spawn([*machine.hardware.command_prefix(), self.program],
                                         "program")
            yield
            self.session.end(process)
        finally:
            machine.end()

    def open_dashboard(self):
        """A second start opens it."""
        self.session.run("env", "-u", "QT_SCALE_FACTOR", self.program)

    def window(self, title, width):
        def shown():
            return next((w.rect for w in self.session.windows() if w.title == title
                         and w.rect.width >= width * SCALE), None)
        return self.session.wait(shown, 20, title)

    def settled(self, rect):
        last = []

        def is_at_rest():
            last.append(self.session.picture(rect))
            return len(last) > 2 and last[-1].rgb == last[-2].rgb == last[-3].rgb
        self.session.wait(is_at_rest, 10, "a picture at rest", 0.3)
        return last[-1]

    def grown(self, rect):
        """With its shadow, without the panel."""
        top = max(rect.y - MARGIN, self.session.panel_rect().height)
        return Rect(rect.x - MARGIN, top, min(rect.width + 2 * MARGIN, SCREEN[0] - rect.x + MARGIN),
                    rect.y + rect.height + MARGIN - top)

    def keep(self, name, image):
        image.write_png(self.folder / f"{name}.png")

    def dashboard(self, name, is_dark=False, **vitals):
        self.session.set_dark(is_dark)
        time.sleep(1)
        with self.run(vitals, updateInterval=INTERVAL):
            time.sleep(READINGS * INTERVAL + 2)
            self.open_dashboard()
            rect = self.window("meterkin", 320)
            time.sleep(1.5)
            self.keep(name, self.session.picture(self.grown(rect)))

    def settings(self):
        self.session.set_dark(False)
        with self.run(updateInterval=3):
            time.sleep(2)
            self.open_dashboard()
            self.window("meterkin", 320)
            time.sleep(1)
            self.session.tool("key", "Tab")
            self.session.tool("key", "Return")
            rect = self.window("meterkin Settings", 470)
            for number in range(4):
                self.settled(rect)
                self.keep(f"settings{number}", self.session.own_picture("meterkin Settings"))
                self.session.tool("key", "ctrl+Tab")
                time.sleep(1)

    def welcome(self):
        with self.run(onboardingShown="false"):
            rect = self.window("meterkin", 520)
            for number in range(2):
                time.sleep(4)       # what it shows comes in one after the other
                self.keep(f"welcome{number}", self.session.picture(self.grown(rect)))
                self.session.tool("mousemove", rect.x + 20, rect.y + rect.height // 2, "click", 1)
                time.sleep(0.5)
                self.session.tool("key", "Return")


def take_windows(program):
    with Gnome("x11", SCREEN) as session:
        session.quieten()
        windows = Windows(session, program)
        windows.dashboard("light")
        windows.dashboard("dark", is_dark=True)
        windows.dashboard("red", memory=88, busy=74, fan=4350)
        windows.settings()
        windows.welcome()
        folder = windows.folder
        rows = (["light", "dark", "red"], [f"settings{n}" for n in range(4)],
                ["welcome0", "welcome1"])
        for number, names in enumerate(rows):
            parts = []
            for name in names:
                parts += ["(", folder / f"{name}.png", "-bordercolor", BACKDROP, "-border", 12, ")"]
            convert("-background", BACKDROP, "-gravity", "center", *parts, "+append",
                    folder / f"row{number}.png")
        convert("-background", BACKDROP, "-gravity", "center",
                *(folder / f"row{n}.png" for n in range(len(rows))), "-append", "-depth", 8,
                "-strip", DOCS / "windows.png")


# --- panels --------------------------------------------------------------------------------------

def take_title(place, look, area, program, state, before):
    """The picture of a title in its panel."""
    settings, memory, color = state
    write_settings(place, updateInterval=0.5, **settings)
    machine = Hardware(tempfile.mkdtemp(dir=place.folder))
    machine.set_memory(memory)
    machine.set_fan(4210)
    process = place.spawn([*machine.command_prefix(), program], "program")
    last = []

    def rested():
        last.append(new_vivid_pixels(before, look(), area, color))
        # panels rearrange themselves around an item, which learns of its place and colours late
        return len(last) > REST and last[-1] and all(seen == last[-1] for seen in last[-REST:])
    try:
        wait(rested, 30, f"a {color} title", 0.2)
        title, image = around(last[-1]), look()
        width, height = CROP
        left = min(max(title.x + title.width // 2 - width // 2, 0), image.width - width)
        top = min(max(title.y + title.height // 2 - height // 2, 0), image.height - height)
        return image.crop(Rect(left, top, width, height))
    finally:
        place.end(process)
        wait(lambda: not new_vivid_pixels(before, look(), area, color), 10, "its end", 0.1)


def panels(stack):
    """Every kind of panel: name, where it runs, how it is looked at, where the title may be."""
    for kind in [*PANELS, "none"]:
        def open_desktop(kind=kind):
            desktop = stack.enter_context(Desktop(wayland=is_on_wayland(kind)))
            desktop.start_panel(kind)
            if kind != "none":
                desktop.wait_for_tray()
            time.sleep(1)
            return desktop, desktop.screenshot
        yield kind, open_desktop
    for name, kind, mode in (("Plasma", Plasma, "x11"), ("GNOME", Gnome, "x11"),
                             ("GNOME, Wayland", Gnome, "native")):
        def open_session(kind=kind, mode=mode):
            place = stack.enter_context(kind(mode))
            place.quieten()
            time.sleep(2)
            place.point_at(300, 300)
            return place, place.picture
        yield name, open_session


def take_panels(program):
    with tempfile.TemporaryDirectory() as folder:
        folder, rows = Path(folder), []
        with ExitStack() as stack:
            kinds = list(panels(stack))
            for name, open_place in kinds:
                row = folder / f"{len(rows)}.png"
                try:
                    place, look = open_place()
                    before = look()
                    area = Rect(0, 0, UPRIGHT, before.height) if name.endswith("-left") else \
                        Rect(before.width // 2, 0, before.width // 2, before.height)
                    pictures = []
                    for number, state in enumerate(STATES):
                        file = folder / f"{len(rows)}-{number}.png"
                        take_title(place, look, area, program, state, before).write_png(file)
                        pictures.append(file)
                    convert("-background", "white", "-font", "DejaVu-Sans", "-pointsize", 22,
                            "-size", f"{CAPTION * SCALE}x{CROP[1] * SCALE}", "-gravity", "west",
                            f"label:{name}", "(", *pictures, "-filter", "point", "-resize",
                            f"{SCALE * 100}%", "+append", ")", "+append", row)
                    rows.append(row)
                    print(name, flush=True)
                except TimeoutError as error:
                    print(f"{name}: {str(error).splitlines()[0]}", file=sys.stderr, flush=True)
                stack.pop_all().close()
        convert(*rows, "-background", "white", "-append", "-depth", 8, "-strip",
                DOCS / "panels.png")


def main():
    parser = argparse.ArgumentParser(prog="make-pictures", description=__doc__)
    parser.add_argument("kind", nargs="?", choices=("windows", "panels"), help="not both")
    parser.add_argument("--program", metavar="FILE", help="another than the release build")
    wanted = parser.parse_args()
    subprocess.run([PROJECT / "scripts/bootstrap", "desktop", "test", "gnome", "plasma"],
                   check=True)
    program = str(Path(wanted.program or release_build()).resolve())
    if wanted.kind != "panels":
        take_windows(program)
    if wanted.kind != "windows":
        take_panels(program)


if __name__ == "__main__":
    main()
