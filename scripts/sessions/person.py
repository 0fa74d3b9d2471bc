"""Whoever sits in front of a session: starts the program, looks at the screen, and uses the pointer
and the keyboard."""
import time
from pathlib import Path

from made_up_hardware import Hardware
from private_home import wait
from screen_changes import around, difference, new_vivid_pixels
from x_display import Rect

DASHBOARD_WIDTH = 320
EDITOR = ("/usr/bin/python3", "-B", str(Path(__file__).with_name("editor.py")))
EDITOR_PLACE = (40, 60)
PARKED = (840, 720)     # where no window of ours comes
STRIP_AREA = Rect(480, 300, 800, 500)
SHADOW = 80             # at most, around a window
POINTER = 32
BODY = 40               # what differs from the desktop by more is no shadow


class FellShort(Exception):
    """What was not as it should be, in words."""


class Person:
    def __init__(self, session, program, folder):
        self.session, self.program_path, self.folder = session, program, folder
        self.hardware = Hardware(session.folder / "hardware")
        self.pictures = []      # (label, file)
        self.program = self.editor = self.empty = None
        self.title = self.title_point = None

    # --- the program ---------------------------------------------------------------------------

    def prepare(self):
        self.panel = self.session.panel_rect()
        # without a panel the title is a strip of its own, which may be anywhere at the lower right
        self.area = self.panel if self.panel.height else STRIP_AREA
        self.editor = self.session.spawn(EDITOR, "editor")
        self.wait(lambda: self.window("editor"), "another program's window")
        self.session.move("editor", *EDITOR_PLACE)
        self.settled()
        rect = self.window("editor").rect
        self.around_editor = Rect(rect.x - SHADOW, rect.y - SHADOW, rect.width + 2 * SHADOW,
                                  rect.height + 2 * SHADOW)
        self.session.quieten()
        self.park()
        self.empty = self.settled()
        self.start()

    def start(self, **settings):
        file = Path(self.session.environment["XDG_CONFIG_HOME"]) / "meterkin" / "meterkin.conf"
        file.parent.mkdir(parents=True, exist_ok=True)
        values = {"onboardingShown": "true", "updateInterval": 0.5} | settings
        file.write_text("".join(f"{key}={value}\n" for key, value in values.items()))
        self.hardware.set_memory(42)
        self.hardware.set_fan(1850)
        self.started = time.monotonic()
        self.program = self.session.spawn(
            [*self.hardware.command_prefix(), self.program_path], "program")

    def stop(self):
        """Ends the program and waits until the panel has let its title go."""
        if self.program:
            self.session.end(self.program)
            self.program = None
            self.wait(lambda: not self.green(), "the end of the title")

    def restart(self, **settings):
        self.stop()
        self.start(**settings)
        self.find_title()

    def said(self):
        return self.session.log("program").read_text(errors="replace")

    # --- what is seen --------------------------------------------------------------------------

    def wait(self, condition, what, seconds=5.0):
        def running():
            value = condition()
            if not value and self.program and self.program.poll() is not None:
                raise FellShort(f"the program ended with status {self.program.returncode}")
            return value
        return wait(running, seconds, what, 0.05)

    def settled(self, seconds=5.0):
        """The picture, once it is at rest."""
        last = []

        def is_at_rest():
            last.append(self.session.picture())
            return len(last) > 1 and last[-1].rgb == last[-2].rgb
        try:
            wait(is_at_rest, seconds, "rest", 0.2)
        except TimeoutError:
            pass
        return last[-1]

    def look(self, label, rect=None):
        """Takes a picture for the sheet."""
        file = self.folder / f"{len(self.pictures):02}.png"
        self.session.picture(rect).write_png(file)
        self.pictures.append((label, file))

    def window(self, title, least_width=0):
        return next((window for window in self.session.windows()
                     if window.title == title and window.rect.width >= least_width), None)

    def green(self, hue="green"):
        """Pixels of the title in the panel: vivid, and not there before."""
        return new_vivid_pixels(self.empty, self.session.picture(), self.area, hue)

    def find_title(self, seconds=10.0, hue="green"):
        """Waits for the title in the panel; keeps where it is."""
        def rested():
            before = self.green(hue)
            time.sleep(0.1)
            return before and self.green(hue) == before and before
        pixels = self.wait(rested, f"a {hue} title in the panel", seconds)
        self.title = around(pixels)
        self.title_point = pixels[len(pixels) // 2]
        return self.title

    def appeared(self, since, least=(40, 14), threshold=8, seconds=4.0):
        """What came to the screen outside the panel."""
        found = []

        def there():
            rect = difference(since, self.session.picture(), threshold, self.on_its_own())
            found.append(rect)
            return (rect and rect.width >= least[0] and rect.height >= least[1]
                    and found[-2:-1] == [rect] and rect)
        return self.wait(there, "anything new on the screen", seconds)

    def gone(self, since, what, seconds=3.0, threshold=8):
        left = []

        def is_gone():
            left[:] = [difference(since, self.session.picture(), threshold,
                                  self.on_its_own())]
            return left == [None]
        try:
            self.wait(is_gone, f"the end of {what}", seconds)
        except TimeoutError as error:
            raise FellShort(f"{error}; still different: %d×%d px at %d, %d"
                            % (*left[0][2:], *left[0][:2])) from None

    def on_its_own(self):
        """What changes without us: the panel's clock, a window that gets or loses the focus, and
        the pointer, which some compositors draw into the picture."""
        title = self.panel if self.panel.height else \
            self.title and Rect(self.title.x - 20, self.title.y - 20, self.title.width + 40, 50)
        return [*filter(None, [title]), self.around_editor, *(
            Rect(x - POINTER // 2, y - POINTER // 2, 2 * POINTER, 2 * POINTER)
            for x, y in (self.pointer, PARKED))]

    def dashboard(self):
        """The dashboard without its shadow, as the picture shows it, or None."""
        rect = difference(self.base, self.session.picture(), BODY, self.on_its_own())
        fits = rect and abs(rect.width - DASHBOARD_WIDTH) <= 4 and rect.height > 200
        return rect if fits else None

    def wait_for_dashboard(self, seconds=10.0):      # a machine may be busy
        last = []

        def rested():
            last.append(self.dashboard())
            return last[-1] and last[-2:-1] == last[-1:] and last[-1]
        return self.wait(rested, "the dashboard", seconds)

    def wait_for_end_of_dashboard(self, seconds=3.0):
        self.gone(self.base, "the dashboard", seconds, BODY)

    # --- pointer and keyboard ------------------------------------------------------------------

    def bare_point(self):
        """Where nothing lies over the desktop, far from the panel."""
        taken = [window.rect for window in self.session.windows()]
        return next(((x, y) for y in range(600, 100, -50) for x in range(60, 700, 50)
                     if not any(r.x <= x <= r.x + r.width and r.y <= y <= r.y + r.height
                                for r in taken)), PARKED)

    def bare_panel_point(self):
        return self.panel.x + self.panel.width * 2 // 5, self.panel.y + self.panel.height // 2

    def park(self):
        """The pointer, where it points at nothing."""
        self.point_at(*PARKED)

    def point_at(self, x, y):
        self.pointer = x, y
        self.session.point_at(x, y)

    def click(self, x, y, button=1, times=1):
        self.pointer = x, y
        self.session.tool("mousemove", x, y, "sleep", 0.1, "click", "--repeat", times,
                          "--delay", 80, button)

    def key(self, *names):
        self.session.tool("key", *names)

    def click_editor(self):
        rect = self.window("editor").rect
        self.click(rect.x + rect.width // 2, rect.y + rect.height // 2)

    def is_notifier(self):
        return self.program.pid in self.session.items()

    def needs_title(self):
        if not self.title:
            raise FellShort("there is no title")

    def rest(self):
        """Keeps the picture of the bare desktop, once tool tips and menus have faded away."""
        self.park()
        try:
            self.gone(self.empty, "what was there before")
        except FellShort:
            pass
        self.base = self.settled()

    def open_dashboard(self):
        self.needs_title()
        self.rest()
        self.click(*self.title_point, times=2 if self.is_double_click() else 1)
        return self.wait_for_dashboard()

    def is_double_click(self):
        return self.session.NAME == "gnome" and self.is_notifier()

    def open_menu(self):
        self.needs_title()
        self.rest()
        self.click(*self.title_point, button=1 if self.is_double_click() else 3)
        return self.appeared(self.base, (60, 40), BODY)
