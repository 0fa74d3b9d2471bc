"""That a login starts the program, unless the user does not want it."""
import os
import subprocess
import unittest
from pathlib import Path

from smoke_case import PATIENCE
from window_case import WindowCase


class TestLogin(WindowCase):
    def entry(self):
        return Path(self.desktop.environment["XDG_CONFIG_HOME"]) / \
            "autostart" / "org.meterkin.Meterkin.desktop"

    def is_autostarted(self):
        """Whether a desktop would start it now."""
        return os.path.realpath(self.program_path) in self.desktop.run(
            "dex", "--autostart", "--dry-run", "--environment", "METERKIN")

    def wait_for_autostart(self):
        self.desktop.wait(self.is_autostarted, what="an autostart entry")

    def check_entry(self):
        subprocess.run(["desktop-file-validate", str(self.entry())], check=True)

    def test_follows_the_user(self):
        self.open_desktop("xfce4")
        self.start()
        self.wait_for_autostart()
        self.check_entry()
        self.wait_for_item()
        self.stop()

        # as the desktop's own tools switch it off
        self.entry().write_text(self.entry().read_text() + "Hidden=true\n")
        self.start_readable()
        self.wait_for_setting("launchAtLogin", "false")
        self.wait_for_item()
        self.assertFalse(self.is_autostarted())

        self.click_title()
        self.open_settings()
        self.click_on("check box: Launch at login")
        self.wait_for_setting("launchAtLogin", "true")
        self.wait_for_autostart()
        self.check_entry()
        self.stop()

        # the login
        self.desktop.spawn(["dex", "--autostart", "--environment", "METERKIN", "--search-paths",
                            str(self.entry().parent)], "login")
        self.desktop.wait(self.items, what="the item")
        self.assertEqual(self.launch("second").wait(PATIENCE), 0)
        self.assertEqual(self.complaints("second"), "")
        self.wait_for(self.popover)


if __name__ == "__main__":
    unittest.main()
