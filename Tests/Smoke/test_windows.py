"""Dashboard, settings and onboarding, opened, used and closed with the pointer and the keyboard."""
import unittest
from pathlib import Path

from smoke_case import FULL, PATIENCE
from window_case import PANEL_HEIGHT, POPOVER_WIDTH, WindowCase
from x_display import Rect

AT_THE_TOP = ("xfce4", "mate")
HOSTS = ("xfce4", "mate", "lxqt", "tint2", "polybar", "none") if FULL else ("xfce4", "lxqt")


class TestDashboard(WindowCase):
    def start_on(self, host):
        self.open_desktop(host)
        self.start()
        self.wait_for_item_in(host, PATIENCE)
        self.wait_for_color("green")

    def open_popover(self):
        self.click_title()
        return self.wait_for(self.popover)

    def test_drops_from_the_title(self):
        for host in HOSTS:
            with self.subTest(host):
                self.start_on(host)
                self.check_place(self.open_popover().rect, host in AT_THE_TOP)
                self.check_ways_to_close(self.desktop.windows()[0].rect)
                self.stop()

    def check_place(self, rect, is_below=True):
        place = self.title_place()
        self.assertTrue(self.desktop.windows()[0].rect.contains(rect), f"{rect} is off the screen")
        self.assertEqual(rect.width, POPOVER_WIDTH * self.scale)
        self.assertTrue(rect.x <= place[0] <= rect.x + rect.width, f"{rect}, {place}")
        distance = rect.y - place[1] if is_below else place[1] - rect.y - rect.height
        self.assertTrue(0 < distance <= PANEL_HEIGHT + 10, f"{distance} from the title")

    def check_ways_to_close(self, screen):
        for way in (lambda: self.click_title(),
                    lambda: self.key("Escape"),
                    lambda: self.click(40, screen.height // 2)):
            self.wait_for(self.popover)
            way()
            self.wait_for_end_of(self.popover)
            self.stays_away(self.popover)
            self.click_title()
        self.wait_for(self.popover)

    def test_rounded_where_it_is_composited(self):
        for composited in (False, True):
            with self.subTest(composited=composited):
                self.open_desktop("xfce4")
                if composited:
                    self.desktop.spawn(["picom", "--backend", "xrender"], "picom")
                    self.desktop.wait(lambda: self.desktop.x.selection_owner("_NET_WM_CM_S0"),
                                      what="the compositor")
                self.start()
                self.wait_for_item_in("xfce4", PATIENCE)
                window = self.open_popover()
                self.assertEqual(window.rect.width > POPOVER_WIDTH, composited)
                shadow = (window.rect.width - POPOVER_WIDTH) // 2
                frame = Rect(window.rect.x + shadow, window.rect.y + shadow, POPOVER_WIDTH, 60)
                image = self.desktop.screenshot(frame)
                background = image.pixel(5, 40)
                self.assertEqual(image.pixel(40, 5), background)
                self.assertEqual(image.pixel(1, 1) == background, not composited)
                self.stop()

    def test_keyboard(self):
        self.start_on("xfce4")
        self.click_title()
        place, screen = self.open_settings().rect, self.desktop.x.windows()[0].rect
        self.assertAlmostEqual(place.x + place.width / 2, screen.width / 2, delta=10)
        self.assertEqual((place.width, place.height), (470, 520))
        self.wait_for_end_of(self.popover)
        # It comes to where the user is.
        self.tool("set_num_desktops", 2, "set_desktop", 1)
        self.wait_for_end_of(self.settings_window)
        self.click_title()
        self.open_settings()
        # What had the keyboard before gets it back.
        self.open_popover()
        self.key("Escape")
        self.wait_for_end_of(self.popover)
        self.key("alt+F4")
        self.wait_for_end_of(self.settings_window)
        self.open_popover()
        self.key("Tab", "Tab", "space")
        self.assertEqual(self.program.wait(PATIENCE), 0, "the quit button ends the program")

    def test_click_elsewhere_reaches_its_target(self):
        self.open_desktop("xfce4")
        self.start_readable()
        self.wait_for_item_in("xfce4", PATIENCE)
        self.click_title()
        self.open_settings()
        self.open_popover()
        self.click_on("check box: Launch at login")
        self.wait_for_end_of(self.popover)
        self.wait_for_setting("launchAtLogin", "false")
        self.stop()

    def open_two_screens(self):
        self.open_desktop("none")
        for name, place, output in (("left", "640/160x720/180+0+0", "screen"),
                                    ("right", "640/160x720/180+640+0", "none")):
            self.desktop.run("xrandr", "--setmonitor", name, place, output)

    def start_at(self, x):
        self.write_settings(stripPosition=f"{x},300")
        self.start()
        self.wait_for_item()

    def test_stays_on_the_screen_of_the_title(self):
        self.open_two_screens()
        for x, screen in ((560, Rect(0, 0, 640, 720)), (660, Rect(640, 0, 640, 720))):
            with self.subTest(x=x):
                self.start_at(x)
                rect = self.open_popover().rect
                self.assertTrue(screen.contains(rect), f"{rect} is not on {screen}")
                self.stop()

    def test_screen_goes_away(self):
        self.open_two_screens()
        self.start_at(660)
        self.open_popover()
        left, mode = Rect(0, 0, 640, 480), "25.18 640 656 752 800 480 490 492 525"
        for change in ("--delmonitor right", "--delmonitor left", f"--newmode small {mode}",
                       "--addmode screen small", "--output screen --mode small"):
            self.desktop.run("xrandr", *change.split())
        self.wait_for_item(where=lambda item: left.contains(item.window.rect))
        self.wait_for_end_of(self.popover)
        self.click_title()
        self.desktop.wait(lambda: left.contains(self.wait_for(self.popover).rect),
                          what="the dashboard on the other screen")
        self.stop()

    def test_scaled(self):
        self.scale = 1.5
        for factor, dots in (("1.5", 96), ("", 144)):
            with self.subTest(QT_SCALE_FACTOR=factor):
                self.open_desktop("xfce4")
                self.desktop.environment["QT_SCALE_FACTOR"] = factor
                resources = self.desktop.folder / "resources"
                resources.write_text(f"Xft.dpi: {dots}\n")
                self.desktop.run("xrdb", "-merge", str(resources))
                self.start()
                self.wait_for_item_in("xfce4", PATIENCE)
                self.check_place(self.open_popover().rect)
                self.stop()

    def test_focus_that_follows_the_pointer(self):
        self.open_desktop("xfce4")
        settings = Path(self.desktop.environment["XDG_CONFIG_HOME"]) / "openbox" / "rc.xml"
        settings.parent.mkdir()
        settings.write_text("<openbox_config><focus><followMouse>yes</followMouse></focus>"
                            "</openbox_config>")
        self.desktop.run("openbox", "--reconfigure")
        self.start_readable()
        self.wait_for_item_in("xfce4", PATIENCE)
        rect = self.open_popover().rect
        self.tool("mousemove", rect.x + rect.width // 2, rect.y + rect.height // 2)
        self.click_on("push button: Open Settings")
        self.wait_for(self.settings_window)
        self.stop()

    def test_focus_that_a_window_manager_gives_late(self):
        self.open_desktop("xfce4")
        self.desktop.spawn(["xev", "-event", "focus"], "typing")
        typing = self.desktop.wait(lambda: next((w for w in self.desktop.x.windows()
                                                 if w.viewable and w.name == "Event Tester"), None))
        self.start()
        self.wait_for_item_in("xfce4", PATIENCE)
        late = self.desktop.spawn(["xdotool", "search", "--sync", "--onlyvisible", "--name",
                                   "^meterkin$", "windowfocus", str(typing.id)], "late")
        self.open_popover()
        self.assertEqual(late.wait(PATIENCE), 0)
        self.stays_away(lambda: not self.popover())
        self.key("Escape")
        self.wait_for_end_of(self.popover)
        self.stop()


class TestOnboarding(WindowCase):
    settings = {"updateInterval": 0.5}

    def press_until(self, done):
        """The button takes keys a moment after it has appeared."""
        self.desktop.wait(lambda: self.key("Return") or done(), what="what Return does")

    def greet(self):
        self.start()
        return self.wait_for(self.onboarding)

    def test_greets_until_it_is_through(self):
        self.open_desktop("xfce4")
        typing = self.desktop.spawn(["xev", "-event", "focus"], "typing")
        self.desktop.wait(lambda: "FocusIn" in self.desktop.log("typing").read_text(),
                          what="the focus elsewhere")
        rect = self.greet().rect
        screen = self.desktop.x.windows()[0].rect
        self.assertEqual((rect.width, rect.height), (520, 420))
        self.assertAlmostEqual(rect.x + rect.width / 2, screen.width / 2, delta=5)
        self.key("Return", "space", "Escape")     # meant for what had the keyboard before
        self.stays_away(lambda: not self.onboarding())
        self.click_in(self.onboarding, 20, 200)
        self.key("Escape")
        self.wait_for_end_of(self.onboarding)
        self.wait_for_item()
        self.stop()
        self.assertNotEqual(self.setting("onboardingShown"), "true")
        self.desktop.end(typing)

        self.greet()
        self.click_in(self.onboarding, 20, 200)
        self.press_until(lambda: self.setting("onboardingShown") == "true")     # "Get Started"
        self.wait_for(self.onboarding)
        self.press_until(lambda: not self.onboarding())     # "Start Using meterkin"
        self.stop()

        self.start()
        self.wait_for_item()
        self.stays_away(self.onboarding)
        self.stop()


if __name__ == "__main__":
    unittest.main()
