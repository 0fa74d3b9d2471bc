"""Text, colour and animation of the title on hardware that is made up, as seen from outside."""
import unittest
from itertools import pairwise

from smoke_case import Hardware, SmokeCase, hue_name, same_shade

HOSTS = ("xfce4", "lxqt")       # seen on the screen, seen over the bus


class TestMadeUpHardware(SmokeCase):
    settings = {"updateInterval": 0.25, "onboardingShown": "true"}

    def start_on_hardware(self, host):
        self.open_desktop(host)
        self.hardware = Hardware(self.desktop.folder / "hardware")
        self.start(self.hardware.command_prefix())

    def check_same(self, one, other):
        self.assertTrue(same_shade(one, other), f"{one} is not {other}")

    def test_memory(self):
        for host in HOSTS:
            with self.subTest(host):
                self.start_on_hardware(host)
                colors, places = {}, set()
                for percent, color in ((42, "green"), (60, "yellow"), (80, "red"), (59, "green"),
                                       (79, "yellow"), (100, "red")):
                    self.hardware.set_memory(percent)
                    self.wait_for_item(text=f"{percent}%")
                    shown = self.wait_for_color(color)
                    self.check_same(shown, colors.setdefault(color, shown))
                    if percent != 42:   # from then on the panel is complete
                        window = self.wait_for_item().window
                        places.add(window and window.rect)
                self.assertEqual(len(places), 1, f"neighbours stay put: {places}")
                self.hardware.lose_memory()
                self.wait_for_item(text="N/A")
                self.check_same(self.wait_for_color("green"), colors["green"])
                self.stop(warning="meterkin.sampling: /proc/meminfo is empty .*\n")

    def test_color_blends_into_the_next(self):
        for host in HOSTS:
            with self.subTest(host):
                self.start_on_hardware(host)
                self.wait_for_item(text="42%")
                green = self.wait_for_color("green")
                self.hardware.set_memory(90)
                red, shades = self.follow_color("red")
                between = {shade for shade in shades
                           if not same_shade(shade, green) and not same_shade(shade, red)}
                self.assertGreaterEqual(len(between), 3, f"shades: {shades}")
                reds = [shade[0] for shade in shades]
                self.assertTrue(all(later >= earlier - 6 for earlier, later in pairwise(reds)),
                                f"steadily from green to red: {shades}")
                self.hardware.set_memory(42)
                self.check_same(self.wait_for_color("green"), green)
                self.stop()

    def follow_color(self, name):
        """Looks as often as it can until the colour has arrived and stays."""
        item = self.wait_for_item()
        shades = []

        def arrived():
            color = self.color_of(item)
            if color:
                shades.append(color)
            return (len(shades) > 20 and hue_name(shades[-1]) == name
                    and len(set(shades[-10:])) == 1)
        self.desktop.wait(arrived, 10, f"the title in {name}")
        return shades[-1], shades


if __name__ == "__main__":
    unittest.main()
