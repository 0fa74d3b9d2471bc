"""What follows an update that another tool has installed: the program offers a restart."""
import os
import shutil
import unittest
from pathlib import Path

from smoke_case import PATIENCE
from window_case import WindowCase


class TestUpdate(WindowCase):
    def test_restart(self):
        self.open_desktop("xfce4")
        self.start_bare_bus("system", "package_service.py")
        installed, new = (self.desktop.folder / name for name in ("installed", "new"))
        for file in installed, new:
            shutil.copy2(self.program_path, file)
        self.program_path = str(installed)
        self.start_readable()
        self.wait_for_item_in("xfce4", PATIENCE)
        new.replace(installed)
        executable = Path(f"/proc/{self.program.pid}/exe")
        self.assertNotEqual(os.readlink(executable), str(installed))

        self.click_title()
        self.open_settings()
        self.act("page tab: About")
        self.click_on("push button: Check for Updates…")
        self.click_on("push button: Restart Now")
        self.desktop.wait(lambda: os.readlink(executable) == str(installed), what="the new program")
        self.wait_for_item_in("xfce4", PATIENCE)
        self.stop()


if __name__ == "__main__":
    unittest.main()
