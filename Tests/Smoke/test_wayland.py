"""The program's windows on Wayland: on its own, and as is usual through Xwayland."""
import json
import unittest

from smoke_case import PATIENCE, hue_name
from panels import HEIGHT as PANEL
from private_desktop import HEIGHT, WIDTH
from wayland_pointer import WaylandPointer
from window_case import POPOVER_WIDTH, WindowCase
from x_display import Rect

GAP = 6         # between panel and dashboard
EDGE = 8        # between dashboard and the screen's edge
CORNER = Rect(WIDTH - 100, HEIGHT - 40, 100, 40)        # where the strip is


class TestWayland(WindowCase):
    def dashboard(self):
        """Whether it is shown: sway does not tell of layer surfaces."""
        return "push button: Open Settings" in self.shown()

    def wait_for_dashboard(self, is_open=True):
        self.desktop.wait(lambda: self.dashboard() == is_open, what=f"dashboard {is_open}")

    def choose_item(self):
        """As the panel does it for a click."""
        item = self.wait_for_item_in("waybar", PATIENCE).notifier
        self.desktop.run("gdbus", "call", "--session", "--dest", item.bus, "--object-path",
                         item.path, "--method", "org.kde.StatusNotifierItem.Activate", "0", "0")

    def test_windows(self):
        for xwayland in (False, True):
            with self.subTest(xwayland=xwayland):
                self.open_desktop("waybar", xwayland=xwayland)
                self.start_readable()
                self.choose_item()
                self.wait_for_dashboard()
                if xwayland:    # beside the bar, which only sway knows of
                    popover = self.wait_for(self.popover)
                    free = json.loads(self.desktop.run("swaymsg", "-rt", "get_workspaces"))[0]["rect"]
                    shadow = (popover.rect.width - POPOVER_WIDTH) // 2
                    self.assertEqual(popover.rect.y + popover.rect.height - shadow,
                                     free["y"] + free["height"] - GAP)
                self.act("push button: Open Settings")
                self.wait_for(self.settings_window)
                self.wait_for_dashboard(False)
                self.act("check box: Launch at login", "Toggle")
                self.wait_for_setting("launchAtLogin", "false")
                self.choose_item()
                self.wait_for_dashboard()
                self.choose_item()
                self.wait_for_dashboard(False)
                self.stop()

    def test_layer_shell(self):
        self.open_desktop(wayland=True, xwayland=True)
        editor = self.desktop.spawn(["xev", "-event", "focus"], "editor")
        events = self.desktop.log("editor").read_text
        self.desktop.wait(lambda: "FocusIn" in events(), what="the editor's focus")
        pointer = WaylandPointer(self.desktop.environment["WAYLAND_DISPLAY"], (WIDTH, HEIGHT))
        self.addCleanup(pointer.socket.close)

        self.start_readable(prefix=("env", "-u", "DISPLAY"))
        self.desktop.wait(lambda: "green" in map(hue_name,
                                                 self.desktop.screenshot(CORNER).pixels()),
                          what="the strip")
        self.assertNotIn("FocusOut", events(), "the strip leaves the keyboard to others")
        pointer.click(WIDTH - 20, HEIGHT - 20)
        self.wait_for_dashboard()
        pointer.click(100, 100)
        self.wait_for_dashboard(False)
        self.desktop.wait(lambda: events().rindex("FocusIn") > events().rindex("FocusOut"),
                          what="the editor's focus again")
        self.desktop.end(editor)

        self.start_panel("waybar")
        self.wait_for_item_in("waybar")
        pointer.click(*self.title_place())
        self.wait_for_dashboard()
        column = Rect(WIDTH - EDGE - POPOVER_WIDTH // 2, HEIGHT - PANEL - 40, 1, 40)

        def distance():
            light = [min(pixel) > 200 for pixel in self.desktop.screenshot(column).pixels()]
            return light[::-1].index(True) if any(light) else None
        self.desktop.wait(lambda: distance() in (GAP, GAP + 1), what=f"{GAP} pixels to the panel")
        pointer.click(WIDTH - EDGE - POPOVER_WIDTH + 20, HEIGHT - PANEL - GAP - 16)
        self.desktop.wait(lambda: "check box: Launch at login" in self.shown(), what="settings")
        self.wait_for_dashboard(False)
        self.stop()


if __name__ == "__main__":
    unittest.main()
