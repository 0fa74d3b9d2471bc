"""What the smoke tests share: the program on a private desktop, seen only from outside."""
import os
import re
import shutil
import sys
import unittest
from pathlib import Path
from typing import NamedTuple, Optional

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
from colors import hue_name, is_vivid  # noqa: E402
from made_up_hardware import Hardware  # noqa: E402, F401  (the cases take it from here)
from panels import NOTIFIER, PANELS, is_on_wayland  # noqa: E402
from private_desktop import Desktop, WATCHER  # noqa: E402
from private_home import PATIENCE  # noqa: E402
from x_display import Window  # noqa: E402

FULL = os.environ.get("METERKIN_SMOKE") == "full"
LABEL = "meterkin: "
BACK_WITHIN = 2.0       # seconds until the item stands in a tray that is there


class Notifier(NamedTuple):
    """A registered StatusNotifierItem."""
    bus: str
    path: str


class Item(NamedTuple):
    """The program's face: a window (in a tray or of its own) or a registered item."""
    text: str
    window: Optional[Window] = None
    notifier: Optional[Notifier] = None


def client(window):
    """The X client that made a window: the upper part of its number."""
    return window >> 21


def title_color(pixels):
    """The most vivid colour: where a letter covers its pixels wholly. None when all is grey."""
    color = max(pixels, key=lambda pixel: max(pixel) - min(pixel), default=(0, 0, 0))
    return color if is_vivid(color) else None


def same_shade(one, other):
    """Equal but for what the edges of a letter add; one step of a blend is further away."""
    return all(abs(a - b) <= 6 for a, b in zip(one, other))


class SmokeCase(unittest.TestCase):
    settings = {"updateInterval": 0.5, "onboardingShown": "true", "memoryGreen": 101,
                "memoryYellow": 102}

    @classmethod
    def setUpClass(cls):
        cls.program_path = os.environ.get("METERKIN_PROGRAM", "")
        assert shutil.which(cls.program_path), "METERKIN_PROGRAM does not name the program"

    def setUp(self):
        self.program = self.desktop = None

    # --- desktop and program -------------------------------------------------------------------

    def open_desktop(self, panel="none", wayland=False, xwayland=False):
        """A fresh desktop, with the panel's tray there already."""
        if self.desktop:
            self.desktop.close()
        self.desktop = Desktop(wayland or is_on_wayland(panel), xwayland)
        self.addCleanup(self.desktop.close)
        self.write_settings()
        self.start_panel(panel)

    def start_panel(self, panel):
        self.desktop.start_panel(panel)
        if panel != "none":
            self.desktop.wait_for_tray()

    def settings_file(self):
        return Path(self.desktop.environment["XDG_CONFIG_HOME"]) / "meterkin" / "meterkin.conf"

    def write_settings(self, **changes):
        path = self.settings_file()
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("".join(f"{key}={value}\n"
                                for key, value in (self.settings | changes).items()))

    def launch(self, name="program", prefix=()):
        output = open(self.desktop.folder / f"{name}.out", "ab")
        self.addCleanup(output.close)
        leaks = Path(__file__).with_name("leaks-of-others")
        return self.desktop.spawn(
            [*prefix, self.program_path], name, stdout=output,
            environment={"LSAN_OPTIONS": f"suppressions={leaks}:print_suppressions=0",
                         # the thread-local storage of loaded libraries can crash the leak check
                         "ASAN_OPTIONS": "intercept_tls_get_addr=0"})

    def start(self, prefix=()):
        self.program = self.launch(prefix=prefix)
        return self.program

    def complaints(self, name="program"):
        """What the program said on standard error."""
        return self.desktop.log(name).read_text(errors="replace")

    def stop(self, number=15, warning=""):
        """The warning is a pattern of all that the program may have said."""
        status = self.desktop.end(self.program, number, PATIENCE)
        self.assertRegex(self.complaints(), rf"\A{warning}\Z")
        self.assertEqual((self.desktop.folder / "program.out").read_text(), "")
        self.assertEqual(status, 0, "a clean end has status 0")

    def start_bare_bus(self, kind, *service):
        """A "session" or "system" bus, and what a file beside this one, with its arguments, is on
        it."""
        self.desktop.start_bus(kind)
        if service:
            file = Path(__file__).with_name(service[0])
            self.desktop.spawn(["/usr/bin/python3", "-B", str(file), *service[1:]], file.stem)

    # --- what is seen of it --------------------------------------------------------------------

    def windows(self):
        if not self.desktop.x:
            return []
        # by number, for one that moves while we look is met twice
        return list({window.id: window for window in self.desktop.x.windows()
                     if window.viewable and window.name.startswith(LABEL)}.values())

    def notifiers(self):
        answer = self.desktop.run(
            "gdbus", "call", "--session", "--dest", WATCHER,
            "--object-path", "/StatusNotifierWatcher",
            "--method", "org.freedesktop.DBus.Properties.Get", WATCHER,
            "RegisteredStatusNotifierItems")
        return [Notifier(bus, "/" + path if path else "/StatusNotifierItem")
                for bus, _, path in (entry.partition("/")
                                     for entry in re.findall(r"'([^']*)'", answer))]

    def property(self, notifier, name):
        """A property's value as gdbus prints it."""
        answer = self.desktop.run(
            "gdbus", "call", "--session", "--dest", notifier.bus, "--object-path", notifier.path,
            "--method", "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem", name)
        return answer.strip()[2:-3] if answer else ""

    def text_property(self, notifier, name):
        return self.property(notifier, name).strip("'\"")

    def pixmaps(self, notifier):
        """The item's pictures: (width, height, pixels that are not see-through)."""
        found = []
        for width, height, data in re.findall(r"\((\d+), (\d+), \[byte ([^\]]*)\]\)",
                                              self.property(notifier, "IconPixmap")):
            argb = [int(value, 16) for value in data.split(", ")]
            found.append((int(width), int(height),
                          [tuple(argb[i + 1:i + 4]) for i in range(0, len(argb), 4)
                           if argb[i] == 255]))
        return found

    def items(self):
        """Every face that the program shows now."""
        before = self.windows()
        notifiers = self.notifiers()
        if before and notifiers:    # one may have taken the other's place while we looked
            before = [window for window in self.windows() if window.id in {w.id for w in before}]
        found = [Item(window.name[len(LABEL):], window=window) for window in before]
        for notifier in notifiers:
            label = self.text_property(notifier, "IconAccessibleDesc")
            if label:           # else gone, only the panel does not know it yet
                found.append(Item(label.removeprefix(LABEL), notifier=notifier))
        return found

    def wait_for_item(self, seconds=PATIENCE, where=lambda item: True, text=None):
        """The one item, once it is the wanted one; at no moment may there be two."""
        seen = []

        def wanted():
            seen[:] = self.items()
            self.assertLessEqual(len(seen), 1, f"more than one item at a time: {seen}")
            self.assertIsNone(self.program.poll(), f"the program ended: {self.complaints()}")
            fits = seen and seen[0].text and where(seen[0])
            return seen[0] if fits and (text is None or seen[0].text.startswith(text)) else None

        try:
            return self.desktop.wait(wanted, seconds, f"the item {text or ''}")
        except TimeoutError as error:
            self.fail(f"{error}\nseen in the end: {seen}")

    def wait_for_item_in(self, panel, seconds=BACK_WITHIN):
        if panel == "none":
            seconds = PATIENCE      # the strip gives a restarting panel time to come back
        return self.wait_for_item(seconds, lambda item: self.is_in(panel, item))

    def is_in(self, panel, item):
        """Whether that is how the item stands in a panel of this kind."""
        if panel != "none" and PANELS[panel].tray == NOTIFIER:
            return item.notifier is not None
        return item.window is not None and self.in_tray(item.window) == (panel != "none")

    def in_tray(self, window):
        """Whether the window stands in one of the program that owns the tray."""
        owner = self.desktop.x.selection_owner("_NET_SYSTEM_TRAY_S0")
        return bool(owner) and client(owner) == client(window.parent)

    def color_of(self, item):
        """The title's colour as it is on the screen or, of a registered item, is handed out."""
        if item.window:     # some panels slide onto the screen
            rect, screen = item.window.rect, self.desktop.x.windows()[0].rect
            return screen.contains(rect) and title_color(self.desktop.screenshot(rect).pixels())
        pictures = self.pixmaps(item.notifier)
        return title_color(pictures[0][2]) if pictures else None

    def wait_for_color(self, name):
        """Waits for a colour of that name that stays; returns it."""
        seen = []

        def stays():
            # docked windows are resized: always look at where the item is now
            item = self.wait_for_item()
            seen.append(self.color_of(item))
            last = seen[-5:]
            settled = len(last) == 5 and all(last) and all(same_shade(last[0], c) for c in last)
            return last[0] if settled and hue_name(last[0]) == name else None

        try:
            return self.desktop.wait(stays, what=f"the title in {name}")
        except TimeoutError as error:
            self.fail(f"{error}\nlast colours: {[(c, c and hue_name(c)) for c in seen[-5:]]}")
