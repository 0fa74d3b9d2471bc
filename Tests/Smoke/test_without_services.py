"""The program where nothing that it could ask for is there, or nothing answers."""
import signal
import unittest

from smoke_case import PATIENCE
from window_case import WindowCase

UPDATES = 200       # what ten minutes hold at the usual three seconds
READS_AN_UPDATE = 2     # of the processors' file and the memory's, at least


class TestWithoutServices(WindowCase):
    settings = WindowCase.settings | {
        "updateInterval": 0.05, "memoryGreen": 1, "memoryYellow": 2, "cpuUsageYellow": 2,
        "alertMemory": "true", "alertCPUUsage": "true", "alertFanSpeed": "true",
        "hotkeyEnabled": "true", "hotkeyKeyCode": 46, "hotkeyModifiers": 6144}

    def reads(self):
        with open(f"/proc/{self.program.pid}/io", encoding="ascii") as counters:
            return next(int(line.split()[1]) for line in counters if line.startswith("syscr"))

    def test_ten_minutes_alone(self):
        self.open_desktop("tint2")
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent/bus"
        self.start()
        self.wait_for_item()
        before = self.reads()
        self.desktop.wait(lambda: self.reads() - before >= UPDATES * READS_AN_UPDATE, 120,
                          "ten minutes of updates")
        self.key("ctrl+alt+m")
        self.open_settings()
        self.stop()

    def test_session_bus_comes_late_and_goes(self):
        self.open_desktop("lxqt")
        environment, bus = self.desktop.environment, self.desktop.bus
        environment["DBUS_SYSTEM_BUS_ADDRESS"] = environment["DBUS_SESSION_BUS_ADDRESS"]
        bus.send_signal(signal.SIGSTOP)
        self.start()
        self.desktop.wait(self.windows, what="the strip")
        bus.send_signal(signal.SIGCONT)
        self.wait_for_item_in("lxqt", PATIENCE)
        self.desktop.end(bus, signal.SIGKILL)
        self.desktop.wait(self.windows, what="the strip")
        self.stop()


if __name__ == "__main__":
    unittest.main()
