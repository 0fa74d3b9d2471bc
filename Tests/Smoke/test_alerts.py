"""Alerts on real notification servers: shown, clicked and not repeated."""
import unittest

from smoke_case import Hardware
from window_case import WindowCase

NOTIFICATIONS = "org.freedesktop.Notifications"
SERVERS = {     # with the button that chooses a notification by default
    "dunst": ("dunst", 2),
    "notification-daemon": ("/usr/lib/notification-daemon/notification-daemon", 1)}


class TestAlerts(WindowCase):
    settings = {"updateInterval": 0.5, "onboardingShown": "true", "alertMemory": "true",
                "alertCPUUsage": "true"}

    def open_session(self):
        self.open_desktop("none")
        self.start_bare_bus("session")
        self.desktop.spawn(["dbus-monitor", f"interface='{NOTIFICATIONS}',member='Notify'"],
                           "monitor")
        self.desktop.wait(lambda: "NameAcquired" in self.log(), what="the monitor")
        self.hardware = Hardware(self.desktop.folder / "hardware")
        self.hardware.set_memory(42)

    def start_server(self, name):
        self.desktop.spawn([SERVERS[name][0]], name)
        self.desktop.wait(lambda: self.desktop.name_has_owner(NOTIFICATIONS), what=name)

    def log(self):
        return self.desktop.log("monitor").read_text(errors="replace")

    def posts(self, text):
        return self.log().count(f'string "{text}')

    def test_alert(self):
        for name, (_, button) in SERVERS.items():
            with self.subTest(name):
                self.open_session()
                self.start_server(name)
                self.start(self.hardware.command_prefix())
                self.wait_for_item(text="42%")
                self.hardware.set_memory(90)
                rect = self.wait_for(self.notification).rect
                self.tool("mousemove", rect.x + rect.width // 2, rect.y + rect.height // 2,
                          "click", button)
                self.wait_for(self.popover)
                self.key("Escape")
                self.wait_for_end_of(self.popover)

                for percent in (42, 90):
                    self.hardware.set_memory(percent)
                    self.wait_for_item(text=f"{percent}%")

                def told():
                    self.hardware.run_processor(93, 7)
                    return self.posts("CPU usage is 93%")
                self.desktop.wait(told, what="the alert of another vital")
                self.assertEqual(self.posts("Memory usage is 90%"), 1, self.log())
                self.stop()


if __name__ == "__main__":
    unittest.main()
