"""The program's windows on Wayland: on its own, and as is usual through Xwayland."""
import json
import unittest

from smoke_case import PATIENCE
from window_case import POPOVER_WIDTH, WindowCase

GAP = 6     # pixels from the panel


class TestWayland(WindowCase):
    def choose_item(self):
        """As the panel does it for a click: no pointer of ours reaches a headless sway."""
        item = self.wait_for_item_in("waybar", PATIENCE).notifier
        self.desktop.run("gdbus", "call", "--session", "--dest", item.bus, "--object-path",
                         item.path, "--method", "org.kde.StatusNotifierItem.Activate", "0", "0")

    def test_windows(self):
        for xwayland in (False, True):
            with self.subTest(xwayland=xwayland):
                self.open_desktop("waybar", xwayland=xwayland)
                self.start_readable()
                self.choose_item()
                popover = self.wait_for(self.popover)
                if xwayland:    # beside the bar, which only sway knows of
                    free = json.loads(self.desktop.run("swaymsg", "-rt", "get_workspaces"))[0]["rect"]
                    shadow = (popover.rect.width - POPOVER_WIDTH) // 2
                    self.assertEqual(popover.rect.y + popover.rect.height - shadow,
                                     free["y"] + free["height"] - GAP)
                self.act("push button: Open Settings")
                self.wait_for(self.settings_window)
                self.wait_for_end_of(self.popover)
                self.act("check box: Launch at login", "Toggle")
                self.wait_for_setting("launchAtLogin", "false")
                self.choose_item()
                self.wait_for(self.popover)
                self.choose_item()
                self.wait_for_end_of(self.popover)
                self.stop()


if __name__ == "__main__":
    unittest.main()
