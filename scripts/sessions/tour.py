"""The program in a real session, used as a person would use it: every row of the table is one thing
that was done, and what was seen of it on the screen."""
import signal
import time
from typing import NamedTuple

from colors import contrast
from person import FellShort, Person
from private_home import wait
from real_session import HEIGHT, WIDTH
from screen_changes import brightness, difference
from x_display import Rect

HELD, SHORT, NOT_THERE = "held", "fell short", "not there"
STEP_SECONDS = 90       # a step that takes longer has failed
LEAST_CONTRAST = 4.5
LEAST_BLIND_CONTRAST = 3.0  # on a panel that does not tell what it looks like
DISTANCE = 6            # between the dashboard and the panel, in pixels
HOT_KEY = {"hotkeyEnabled": "true", "hotkeyKeyCode": 46, "hotkeyModifiers": 0x1800}
KEYS = "ctrl+alt+m"
DARK = 110              # a mean brightness below it
STEPS = {}


class Row(NamedTuple):
    step: str
    verdict: str
    detail: str


class NotThere(Exception):
    """Why a step cannot apply in this session, in words."""


class StepTimedOut(Exception):
    pass


def step(name):
    """Adds a method to the tour, in the order of the source."""
    def add(method):
        STEPS[name] = method
        return method
    return add


class Tour(Person):
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
            signal.alarm(STEP_SECONDS)      # for the way back, too
            try:
                self.come_back()
            except (StepTimedOut, FellShort):
                pass
            finally:
                signal.alarm(0)
                signal.signal(signal.SIGALRM, previous)

    def come_back(self):
        """From wherever a step has led, to the bare desktop."""
        for _ in range(3):
            self.park()
            if not difference(self.empty, self.settled(2), 8, self.on_its_own()):
                return
            self.key("Escape")
            self.click(*self.bare_point())

    # --- the steps -----------------------------------------------------------------------------

    @step("title")
    def show_title(self):
        rect = self.find_title()
        seconds = time.monotonic() - self.started
        middle = min(max(rect.x + rect.width // 2 - 160, 0), self.panel.width - 320)
        self.look("title, magnified", Rect(middle, self.panel.y, 320, self.panel.height)
                  if self.panel.height else Rect(middle, min(rect.y - 15, HEIGHT - 40), 320, 40))
        kind = "StatusNotifierItem" if self.is_notifier() else \
            "XEmbed" if self.panel.height else "strip"
        return f"{kind}, {rect.width}×{rect.height} px after {seconds:.1f} s"

    @step("title: contrast")
    def measure_contrast(self):
        self.needs_title()
        image, rect = self.session.picture(), self.title
        letters = max(image.crop(rect).pixels(), key=lambda color: max(color) - min(color))
        panel = image.pixel(rect.x - 2, rect.y)
        found = contrast(letters, panel)
        least = LEAST_CONTRAST if self.session.TELLS_BACKGROUND else LEAST_BLIND_CONTRAST
        detail = (f"{found:.1f}:1 of {least:g}, "
                  "#%02x%02x%02x on #%02x%02x%02x" % (*letters, *panel))
        if found < least:
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
            self.wait_for_dashboard(3 if reason else 10)
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
        try:
            self.wait(lambda: self.typed().endswith("beforeafter"), "what was typed in the editor",
                      3)
        except TimeoutError:
            if "DISPLAY" not in self.session.environment or self.session.NAME == "sway":
                raise NotThere("the compositor gives every new window the keyboard") from None
            raise

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
