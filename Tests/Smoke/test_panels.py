"""The item in each kind of panel, whether the panel or the program comes first, or comes again."""
import unittest

from smoke_case import FULL, PATIENCE, SmokeCase, hue_name, is_on_wayland, title_color
from x_display import Rect

WIDE, SQUARE, NOTIFIER, STRIP = "wide text", "square", "notifier", "strip"
HOSTS = {"xfce4": WIDE, "lxqt": NOTIFIER, "tint2": SQUARE,
         "mate": WIDE, "i3bar": SQUARE, "polybar": SQUARE, "waybar": NOTIFIER, "none": STRIP,
         "xfce4-left": SQUARE, "mate-left": SQUARE, "swaybar": NOTIFIER}
SHORT_LIST = ("xfce4", "lxqt", "tint2", "none")


class TestPanels(SmokeCase):
    def test_program_after_panel(self):
        for host in HOSTS if FULL else SHORT_LIST:
            with self.subTest(host):
                self.open_desktop(host)
                self.start()
                self.check_item(host, self.wait_for_item_in(host, PATIENCE))
                self.stop()
                self.desktop.wait(lambda: not self.items(), what="the item is gone")

    def test_program_before_panel(self):
        for host in HOSTS:
            if host == "none":
                continue
            with self.subTest(host):
                self.open_desktop(wayland=is_on_wayland(host))
                self.start()
                if not self.desktop.wayland:
                    self.wait_for_item_in("none")
                self.start_panel(host)
                self.check_item(host, self.wait_for_item_in(host))
                self.desktop.kill_panel()
                self.start_panel(host)
                self.check_item(host, self.wait_for_item_in(host))
                self.stop()

    def check_item(self, host, item):
        kind = HOSTS[host]
        self.assertRegex(item.text, r"^\d+%")
        self.wait_for_color("green")
        if kind == NOTIFIER:
            self.check_notifier(host, self.wait_for_item().notifier)
        else:
            self.wait_for_item(where=lambda item: self.has_its_size(kind, item.window.rect))

    def has_its_size(self, kind, rect):
        screen = self.desktop.x.windows()[0].rect
        fits = abs(rect.width - rect.height) <= 2 if kind == SQUARE else \
            rect.width > 1.3 * rect.height      # for the text
        return fits and screen.contains(rect)

    def check_notifier(self, host, notifier):
        self.desktop.wait(lambda: self.text_property(notifier, "XAyatanaLabel")
                          == self.wait_for_item().text, what="a label that says the same")
        tip = self.property(notifier, "ToolTip")
        for metric in ("CPU", "Memory", "Fan"):
            self.assertIn(metric, tip)
        self.assertEqual(tip.count("\\n") + tip.count("<br"), 2, f"three lines: {tip}")
        self.check_colored_panel(host)

    def check_colored_panel(self, host):
        """The panel draws the picture that it was given."""
        screen = self.desktop.screenshot()
        panel = Rect(0, screen.height - 30, screen.width, 30)

        def drawn():
            color = title_color(self.desktop.screenshot(panel).pixels())
            return color and hue_name(color) == "green"
        self.desktop.wait(drawn, what=f"the title on {host}")


if __name__ == "__main__":
    unittest.main()
