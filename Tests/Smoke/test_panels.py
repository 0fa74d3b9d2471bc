"""The item in each kind of panel, whether the panel or the program comes first."""
import re
import unittest

from smoke_case import FULL, SmokeCase, hue_name, title_color
from x_display import Rect

WIDE, SQUARE, NOTIFIER, STRIP = "wide text", "square", "notifier", "strip"
HOSTS = {"xfce4": WIDE, "lxqt": NOTIFIER, "tint2": SQUARE,
         "mate": WIDE, "i3bar": SQUARE, "polybar": SQUARE, "waybar": NOTIFIER, "none": STRIP}
SHORT_LIST = ("xfce4", "lxqt", "tint2", "none")


class TestPanels(SmokeCase):
    def test_program_after_panel(self):
        for host in HOSTS if FULL else SHORT_LIST:
            with self.subTest(host):
                self.open_desktop(host)
                self.start()
                self.check_item(host, self.wait_for_item_in(host, seconds=10))
                self.stop()
                self.desktop.wait(lambda: not self.items(), what="the item is gone")

    def test_program_before_panel(self):
        for host in HOSTS:
            if host == "none":
                continue
            with self.subTest(host):
                self.open_desktop(wayland=host == "waybar")
                self.start()
                if not self.desktop.wayland:
                    self.wait_for_item_in("none")
                self.start_panel(host)
                self.check_item(host, self.wait_for_item_in(host))
                self.stop()

    def check_item(self, host, item):
        kind = HOSTS[host]
        self.assertRegex(item.text, r"^\d+%")
        self.wait_for_color("green")
        item = self.wait_for_item()
        if kind == NOTIFIER:
            self.check_notifier(host, item.notifier)
        else:
            self.check_window(kind, item.window)

    def check_window(self, kind, window):
        width, height = window.rect.width, window.rect.height
        screen = self.desktop.x.windows()[0].rect
        self.assertTrue(screen.contains(window.rect), f"{window.rect} is off the screen")
        if kind == SQUARE:
            self.assertAlmostEqual(width, height, delta=2)
        else:
            self.assertGreater(width, 1.3 * height, "the text has its width")

    def check_notifier(self, host, notifier):
        text = self.wait_for_item().text
        self.assertEqual(self.text_property(notifier, "XAyatanaLabel"), text)
        self.assertEqual(self.property(notifier, "ItemIsMenu"), "false")
        self.assertEqual(self.text_property(notifier, "Status"), "Active")
        for name in ("Id", "Title", "Category"):
            self.assertTrue(self.text_property(notifier, name), name)
        tip = self.property(notifier, "ToolTip")
        for metric in ("CPU", "Memory", "Fan"):
            self.assertIn(metric, tip)
        self.assertEqual(tip.count("\\n") + tip.count("<br"), 2, f"three lines: {tip}")
        self.check_menu(notifier)
        self.check_colored_panel(host)

    def check_menu(self, notifier):
        path = re.search(r"/\S+?(?=')", self.property(notifier, "Menu"))
        layout = self.desktop.run(
            "gdbus", "call", "--session", "--dest", notifier.bus, "--object-path", path[0],
            "--method", "com.canonical.dbusmenu.GetLayout", "0", "--", "-1", "[]")
        labels = re.findall(r"'label': <'([^']*)'>", layout)
        self.assertEqual(len(labels), 3, layout)
        for word, label in zip(("dashboard", "settings", "quit"), labels):
            self.assertIn(word, label.lower().replace("_", ""))

    def check_colored_panel(self, host):
        """The panel draws the picture that it was given."""
        screen = self.desktop.screenshot()
        panel = Rect(0, screen.height - 30, screen.width, 30)

        def drawn():
            color = title_color(self.desktop.screenshot(panel).pixels())
            return color and hue_name(color) == "green"
        self.desktop.wait(drawn, 5, f"the title on {host}")


if __name__ == "__main__":
    unittest.main()
