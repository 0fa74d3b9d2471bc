"""The program in a real session, used as a person would use it: every row of the table is one thing
that was done, and what was seen of it on the screen."""
import signal
import time
from pathlib import Path
from typing import NamedTuple

from colors import contrast, hue_name, is_vivid
from made_up_hardware import Hardware
from private_home import wait
from real_session import HEIGHT, WIDTH
from x_display import Rect

HELD, SHORT, NOT_THERE = "held", "fell short", "not there"
STEP_SECONDS = 90       # a step that takes longer has failed
DISTANCE = 6            # between the dashboard and the panel, in pixels
DASHBOARD_WIDTH = 320
HOT_KEY = {"hotkeyEnabled": "true", "hotkeyKeyCode": 46, "hotkeyModifiers": 0x1800}
KEYS = "ctrl+alt+m"
EDITOR = ("/usr/bin/python3", "-B", str(Path(__file__).with_name("editor.py")))
SHADOW = 80             # at most, around a window
POINTER = 32
DARK = 110              # a mean brightness below it
PARKED = (840, 720)     # where no window of ours comes
STRIP_AREA = Rect(480, 300, 800, 500)
EDITOR_PLACE = (40, 60)
BODY = 40               # what differs from the desktop by more is no shadow


class Row(NamedTuple):
    step: str
    verdict: str
    detail: str


class FellShort(Exception):
    """What was not as it should be, in words."""


class NotThere(Exception):
    """Why a step cannot apply in this session, in words."""


class StepTimedOut(Exception):
    pass


STEPS = {}


def step(name):
    """Adds a method to the tour, in the order of the source."""
    def add(method):
        STEPS[name] = method
        return method
    return add


def difference(before, after, threshold, left_out=()):
    """The rectangle around all pixels that differ by more than the threshold; None for none."""
    stride, found = 3 * before.width, []
    for y in range(before.height):
        old, new = before.rgb[y * stride:(y + 1) * stride], after.rgb[y * stride:(y + 1) * stride]
        if old == new:
            continue
        columns = [i // 3 for i, (a, b) in enumerate(zip(old, new)) if abs(a - b) > threshold]
        columns = [x for x in columns
                   if not any(r.x <= x < r.x + r.width and r.y <= y < r.y + r.height
                              for r in left_out)]
        if columns:
            found.append((y, min(columns), max(columns)))
    if not found:
        return None
    left, right = min(f[1] for f in found), max(f[2] for f in found)
    return Rect(left, found[0][0], right - left + 1, found[-1][0] - found[0][0] + 1)


def new_vivid_pixels(before, after, area, hue):
    """Where in the area a vivid colour of that name has come."""
    old, new = before.crop(area), after.crop(area)
    return [(area.x + i % area.width, area.y + i // area.width)
            for i, color in enumerate(new.pixels())
            if is_vivid(color) and hue_name(color) == hue
            and color != tuple(old.rgb[3 * i:3 * i + 3])]


def around(pixels):
    columns, rows = [x for x, _ in pixels], [y for _, y in pixels]
    return Rect(min(columns), min(rows), max(columns) - min(columns) + 1,
                max(rows) - min(rows) + 1)


class Tour:
    def __init__(self, session, program, folder):
        self.session, self.program_path, self.folder = session, program, folder
        self.hardware = Hardware(session.folder / "hardware")
        self.pictures = []      # (label, file)
        self.program = self.editor = self.empty = None
        self.title = self.title_point = None

    def walk(self, chosen=()):
        """The rows, each as soon as it is known."""
        self.prepare()
        for name, method in STEPS.items():
            if not chosen or name in chosen:
                yield self.take(name, method)
        self.stop()

    def take(self, name, method):
        def expired(number, frame):
            raise StepTimedOut
        previous = signal.signal(signal.SIGALRM, expired)
        signal.alarm(STEP_SECONDS)
        try:
            return Row(name, HELD, method(self) or "")
        except NotThere as reason:
            return Row(name, NOT_THERE, str(reason))
        except (FellShort, TimeoutError) as error:
            self.look(f"{name}: fell short")
            return Row(name, SHORT, str(error).splitlines()[0])
        except StepTimedOut:
            self.look(f"{name}: fell short")
            return Row(name, SHORT, f"not over after {STEP_SECONDS} s")
        finally:
            signal.alarm(0)
            signal.signal(signal.SIGALRM, previous)
            signal.alarm(STEP_SECONDS)      # for the way back, too
            try:
                self.come_back()
            except (StepTimedOut, TimeoutError):
                pass
            finally:
                signal.alarm(0)

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

    def gone(self, since, what, seconds=3.0):
        left = []

        def is_gone():
            left[:] = [difference(since, self.session.picture(), 8, self.on_its_own())]
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

    def wait_for_dashboard(self, seconds=5.0):
        last = []

        def rested():
            last.append(self.dashboard())
            return last[-1] and last[-2:-1] == last[-1:] and last[-1]
        return self.wait(rested, "the dashboard", seconds)

    def wait_for_end_of_dashboard(self, seconds=3.0):
        self.wait(lambda: not difference(self.base, self.session.picture(), BODY, self.on_its_own()),
                  "the dashboard's end", seconds)

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

    def come_back(self):
        """From wherever a step has led, to the bare desktop."""
        for _ in range(3):
            self.park()
            if not difference(self.empty, self.settled(2), 8, self.on_its_own()):
                return
            self.key("Escape")
            self.click(*self.bare_point())

    def is_notifier(self):
        return self.program.pid in self.session.items()

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
        return self.appeared(self.base, (60, 40))

    # --- the steps -----------------------------------------------------------------------------

    @step("title")
    def show_title(self):
        rect = self.find_title()
        seconds = time.monotonic() - self.started
        middle = min(max(rect.x + rect.width // 2 - 160, 0), self.panel.width - 320)
        self.look("title, magnified", Rect(middle, self.panel.y, 320, self.panel.height)
                  if self.panel.height else Rect(middle, rect.y - 15, 320, 40))
        kind = "StatusNotifierItem" if self.is_notifier() else \
            "XEmbed" if self.panel.height else "strip"
        return f"{kind}, {rect.width}×{rect.height} px after {seconds:.1f} s"

    def needs_title(self):
        if not self.title:
            raise FellShort("there is no title")

    @step("title: contrast")
    def measure_contrast(self):
        self.needs_title()
        image, rect = self.session.picture(), self.title
        letters = max(image.crop(rect).pixels(), key=lambda color: max(color) - min(color))
        panel = image.pixel(rect.x - 2, rect.y)
        found = contrast(letters, panel)
        detail = f"{found:.1f}:1, #%02x%02x%02x on #%02x%02x%02x" % (*letters, *panel)
        if found < 4.5:
            raise FellShort(detail)
        return detail

    @step("title: follows the tier")
    def follow_tier(self):
        for percent, hue in ((70, "yellow"), (90, "red"), (42, "green")):
            self.hardware.set_memory(percent)
            self.find_title(5, hue)
            if hue == "red":
                self.look("a red tier")
        return "yellow at 70 %, red at 90 %, green at 42 %"

    @step("strip leaves the keyboard")
    def type_beside_strip(self):
        if self.panel.height:
            raise NotThere("the title is in a panel")
        self.stop()
        self.click_editor()
        self.session.tool("type", "before")
        self.start()
        self.find_title()
        self.session.tool("type", "strip")
        self.wait(lambda: self.typed().endswith("beforestrip"), "what was typed in the editor", 3)
        rect = self.title
        if rect.x < WIDTH * 2 // 3 or rect.y < HEIGHT * 2 // 3:
            raise FellShort(f"at {rect.x}, {rect.y}, not at the lower right")

    @step("tool tip")
    def show_tool_tip(self):
        if self.session.NAME == "gnome":
            raise NotThere("GNOME Shell shows none, and tells items of clicks only")
        if self.session.mode == "swaybar":
            raise NotThere("swaybar has no tool tips")
        self.needs_title()
        self.rest()
        self.point_at(*self.title_point)
        rect = self.appeared(self.base)
        self.look("tool tip")
        self.park()
        self.gone(self.base, "the tool tip")
        return f"{rect.width}×{rect.height} px"

    @step("menu")
    def show_menu(self):
        rect = self.open_menu()
        self.look("menu")
        self.menu = rect
        return f"{rect.width}×{rect.height} px"

    @step("menu: Escape")
    def escape_from_menu(self):
        self.open_menu()
        self.key("Escape")
        try:
            self.gone(self.base, "the menu")
        except FellShort:
            if self.session.NAME == "sway" and self.panel.height:
                raise NotThere("Waybar draws the menu, and gets no keys") from None
            raise

    def leave_menu(self, place):
        self.open_menu()
        place()
        self.park()
        self.gone(self.base, "the menu")

    @step("menu: click on a window")
    def click_beside_menu(self):
        self.leave_menu(self.click_editor)

    @step("menu: click on the desktop")
    def click_desktop_beside_menu(self):
        self.leave_menu(lambda: self.click(*self.bare_point()))

    @step("dashboard by click")
    def show_dashboard(self):
        rect = self.open_dashboard()
        self.look("dashboard")
        self.place = rect
        way = "double click" if self.is_double_click() else "click"
        return f"{way}, {rect.width}×{rect.height} px at {rect.x}, {rect.y}"

    def needs_panel(self):
        if not self.panel.height:
            raise NotThere("there is no panel")

    def needs_place(self):
        self.needs_panel()
        if self.session.NAME == "gnome" and self.session.mode == "native":
            raise NotThere("GNOME lets no native program place its windows")

    @step("dashboard: distance to the panel")
    def measure_distance(self):
        self.needs_place()
        rect = self.open_dashboard()
        below = rect.y - (self.panel.y + self.panel.height)
        found = below if self.panel.y == 0 else self.panel.y - rect.y - rect.height
        if abs(found - DISTANCE) > 1:
            raise FellShort(f"{found} px, not {DISTANCE}")
        return f"{found} px"

    @step("dashboard: near the title")
    def measure_place(self):
        self.needs_place()
        rect, (x, _) = self.open_dashboard(), self.title_point
        if not rect.x <= x <= rect.x + rect.width:
            raise FellShort(f"from {rect.x} to {rect.x + rect.width}, the title at {x}")

    @step("dashboard: not in the task bar")
    def look_at_task_bar(self):
        if self.session.NAME == "sway":
            raise NotThere("sway's bars list no windows")
        if self.session.NAME == "gnome" and self.session.mode == "native":
            raise NotThere("GNOME lets no native program leave its list of windows")
        self.open_dashboard()
        window = self.window("meterkin")
        if window and window.is_in_task_bar:
            raise FellShort("the compositor lists it there")

    @step("dashboard: Escape")
    def escape_from_dashboard(self):
        self.open_dashboard()
        self.key("Escape")
        self.wait_for_end_of_dashboard()

    def leave_dashboard(self, place):
        self.open_dashboard()
        place()
        self.park()
        self.wait_for_end_of_dashboard()

    @step("dashboard: click on the title")
    def click_title_again(self):
        times = 2 if self.is_double_click() else 1
        self.leave_dashboard(lambda: self.click(*self.title_point, times=times))

    @step("dashboard: click on a window")
    def click_window(self):
        self.leave_dashboard(self.click_editor)

    def needs_clicks_of_others(self):
        if self.session.NAME == "gnome" and self.session.mode == "native":
            raise NotThere("GNOME tells no native program of such clicks")

    @step("dashboard: click on the desktop")
    def click_desktop(self):
        self.needs_clicks_of_others()
        self.leave_dashboard(lambda: self.click(*self.bare_point()))

    @step("dashboard: click on the panel")
    def click_panel(self):
        self.needs_panel()
        self.needs_clicks_of_others()
        self.leave_dashboard(lambda: self.click(*self.bare_panel_point()))

    def choose(self, share):
        """An entry of the menu, by how far down it is."""
        rect = self.open_menu()
        self.click(rect.x + rect.width // 2, rect.y + int(rect.height * share))

    @step("dashboard by menu")
    def open_by_menu(self):
        self.choose(0.2)
        self.wait_for_dashboard()

    def open_settings(self):
        self.choose(0.5)
        return self.wait(lambda: self.window("meterkin Settings"), "the settings")

    @step("settings by menu")
    def show_settings(self):
        self.open_settings()
        self.settled()
        self.look("settings")
        self.wait(lambda: self.window("meterkin Settings").has_keyboard, "the settings' focus")

    @step("dark and light while it runs")
    def change_scheme(self):
        self.open_settings()
        self.settled()
        self.title_bars, detail = [], ""
        for is_dark in (True, False):
            self.session.set_dark(is_dark)
            try:
                self.wait(lambda: self.is_dark_inside() == is_dark,
                          "dark settings" if is_dark else "light settings", 6)
            except TimeoutError:
                own = self.session.own_picture("meterkin Settings")
                if not own or (brightness(own) < DARK) != is_dark:
                    raise
                detail = "the window itself; the compositor had not repainted it on the screen"
            self.settled()
            self.title_bars.append(self.title_bar())
            if is_dark:
                self.look("settings, dark")
        return detail

    def is_dark_inside(self):
        rect = self.window("meterkin Settings").rect
        below = Rect(rect.x + 8, rect.y + rect.height // 2, rect.width - 16, rect.height // 3)
        return brightness(self.session.picture(below)) < DARK

    def title_bar(self):
        rect = self.window("meterkin Settings").rect
        return brightness(self.session.picture(Rect(rect.x + 30, rect.y + 4, 100, 20)))

    @step("title bar follows dark and light")
    def compare_title_bars(self):
        if self.session.NAME == "sway":
            raise NotThere("sway paints its own")
        if len(getattr(self, "title_bars", ())) < 2:
            raise FellShort("not measured, since the window did not follow")
        dark, light = self.title_bars
        detail = f"brightness {dark} in dark, {light} in light"
        if dark > DARK or light < DARK:
            raise FellShort(detail)
        return detail

    @step("notification, and its click")
    def choose_notification(self):
        self.restart(alertMemory="true")
        self.rest()
        self.hardware.set_memory(90)
        rect = self.appeared(self.base, (120, 40), seconds=8)
        self.look("notification")
        self.click(rect.x + rect.width // 2, rect.y + rect.height // 2,
                   self.session.NOTIFICATION_BUTTON)
        self.park()
        self.wait_for_dashboard()
        self.look("after a click on the notification")

    @step("pointer is at rest after an activation")
    def look_for_busy_pointer(self):
        if self.session.is_starting_something() is None:
            raise NotThere("the compositor does not tell")
        self.wait(lambda: not self.session.is_starting_something(), "the end of the activation", 5)

    @step("hot key")
    def press_hot_key(self):
        reason = self.session.without_hot_key()
        before = {window.title for window in self.session.windows()}
        self.restart(**HOT_KEY)
        time.sleep(1)       # the portal asks nobody when it works
        others = {window.title for window in self.session.windows()} - before
        self.rest()
        self.click_editor()
        self.key(KEYS)
        try:
            self.wait_for_dashboard(3)
        except TimeoutError:
            if reason:
                raise NotThere(reason) from None
            raise
        self.look("hot key")
        self.key(KEYS)
        self.wait_for_end_of_dashboard()
        if others:
            raise FellShort(f"works, but opened {', '.join(others)}")

    @step("panel off and on")
    def change_panel(self):
        self.needs_panel()
        taken = []
        self.restart()
        for _ in range(self.session.PANEL_CHANGES):
            self.session.end_panel()
            time.sleep(0.5)
            self.session.start_panel()
            self.wait(self.session.has_panel, "the panel", 20)
            start = time.monotonic()
            self.find_title(10)
            taken.append(time.monotonic() - start)
        detail = "back after " + ", ".join(f"{seconds:.1f}" for seconds in taken) + " s"
        if max(taken) > self.session.BACK_WITHIN:
            raise FellShort(detail)
        return detail

    @step("welcome leaves the keyboard")
    def type_beside_welcome(self):
        self.stop()
        self.click_editor()
        self.session.tool("type", "before")
        self.base = self.settled()
        self.start(onboardingShown="false")
        self.wait(lambda: self.window("meterkin", 500), "the welcome")
        time.sleep(1)       # it fades in
        self.look("welcome")
        self.session.tool("type", "after")
        self.wait(lambda: self.typed().endswith("beforeafter"), "what was typed in the editor", 3)

    def typed(self):
        lines = self.session.log("editor").read_text().split("\n")
        return lines[-2] if len(lines) > 1 else ""

    @step("quit by menu")
    def quit(self):
        self.restart()
        self.choose(0.85)
        status = wait(lambda: self.program.poll() is not None and [self.program.returncode], 5,
                      "the program's end")
        self.program = None
        if status != [0]:
            raise FellShort(f"status {status[0]}")

    @step("no warnings")
    def read_warnings(self):
        lines = {line for line in self.said().splitlines()
                 if not (self.session.without_hot_key() and line.startswith("meterkin.hotkey"))}
        if lines:
            raise FellShort(" / ".join(sorted(lines)))


def brightness(image):
    """The mean of all pixels' parts, from 0 to 255."""
    return sum(image.rgb) // max(len(image.rgb), 1)
