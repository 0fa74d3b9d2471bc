"""The program's windows, driven with the pointer and the keyboard."""
import json
from pathlib import Path

from smoke_case import SmokeCase, hue_name
from x_display import Rect

POPOVER_WIDTH = 320
TREE = ("/usr/bin/python3", "-B", str(Path(__file__).with_name("accessible_tree.py")))
SHADOW = 30         # at most, on each side, where the desktop composites
PANEL_HEIGHT = 30
CLICK_SETTLES = 0.7     # no bounce comes later than that


class WindowCase(SmokeCase):
    scale = 1

    # --- what is there -------------------------------------------------------------------------

    def window(self, name, width):
        found = [window for window in self.desktop.windows()
                 if window.viewable and window.name == name
                 and width <= window.rect.width <= width + 2 * SHADOW]
        self.assertLessEqual(len(found), 1, f"one {name} at a time")
        return found[0] if found else None

    def popover(self):
        return self.window("meterkin", POPOVER_WIDTH * self.scale)

    def settings_window(self):
        return self.window("meterkin Settings", 470)

    def onboarding(self):
        return self.window("meterkin", 520)

    def notification(self):
        """The one window of a notification server."""
        found = [window for window in self.desktop.x.windows()
                 if window.viewable and window.name in ("Dunst", "Notification")]
        return found[0] if len(found) == 1 else None

    def wait_for(self, window):
        """Waits for a window to be seen, with something in it, at its final place."""
        last = []

        def settled():
            last.append(window())
            return (len(last) > 3 and last[-1] and last[-1] == last[-3]
                    and self.desktop.is_painted(last[-1]) and last[-1])
        return self.desktop.wait(settled, what=window.__name__)

    def wait_for_end_of(self, window):
        self.desktop.wait(lambda: not window(), what=f"the end of {window.__name__}")

    def stays_away(self, window):
        """That a window does not come back."""
        with self.assertRaises(TimeoutError):
            self.desktop.wait(window, CLICK_SETTLES)

    def setting(self, key):
        for line in self.settings_file().read_text().splitlines():
            if line.startswith(key + "="):
                return line.partition("=")[2]
        return None

    def wait_for_setting(self, key, value):
        self.desktop.wait(lambda: self.setting(key) == value, what=f"{key}={value}")

    # --- what assistive techniques see ---------------------------------------------------------

    def start_readable(self, prefix=()):
        self.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        return self.start(prefix)

    def shown(self, check=lambda element, window: None):
        """The elements on the screen by their labels, like "check box: Launch at login"."""
        found = {}

        def collect(element, window):
            check(element, window)
            if "showing" in element["states"]:
                found[element["label"]] = element
            for child in element["children"]:
                collect(child, window)
        for window in json.loads(self.desktop.run(*TREE) or "[]"):
            collect(window, window)
        return found

    def act(self, label, wish="Press", verb="do"):
        self.desktop.wait(lambda: self.desktop.run(*TREE, verb, label, wish) == "true\n",
                          what=f"{wish} for {label}")

    def click_on(self, label):
        """With the pointer, wherever it is shown."""
        x, y, width, height = self.desktop.wait(lambda: self.shown().get(label), what=label)["rect"]
        self.click(x + width // 2, y + height // 2)

    def open_settings(self):
        """From the dashboard, which has the keyboard."""
        self.wait_for(self.popover)
        self.key("Tab", "Return")
        return self.wait_for(self.settings_window)

    # --- pointer and keyboard ------------------------------------------------------------------

    def tool(self, *words):
        self.desktop.run("xdotool", *map(str, words))

    def click(self, x, y):
        self.tool("mousemove", x, y, "click", 1)

    def click_in(self, window, x, y):
        rect = window().rect
        self.click(rect.x + x, rect.y + y)

    def key(self, *keys):
        for name in keys:
            self.tool("key", name)

    def title_place(self):
        """The middle of the title, wherever the panel has drawn it."""
        item = self.wait_for_item()
        if item.window:
            rect = item.window.rect
            return rect.x + rect.width // 2, rect.y + rect.height // 2
        screen = self.desktop.x.windows()[0].rect
        panel = Rect(0, screen.height - PANEL_HEIGHT, screen.width, PANEL_HEIGHT)

        def green():
            return [number for number, color in enumerate(self.desktop.screenshot(panel).pixels())
                    if max(color) - min(color) > 60 and hue_name(color) == "green"]
        found = self.desktop.wait(green, what="the title in the panel")
        middle = found[len(found) // 2]
        return middle % panel.width, panel.y + middle // panel.width

    def click_title(self):
        self.click(*self.title_place())
