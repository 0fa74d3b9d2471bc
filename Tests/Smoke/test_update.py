"""The program after an update, and where a part of it is missing."""
import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from smoke_case import PATIENCE
from window_case import WindowCase

PLUGIN = "meterkin-windows.so"


class TestUpdate(WindowCase):
    def install(self):
        """A copy of the program that may be changed."""
        original, folder = Path(type(self).program_path), self.desktop.folder / "bin"
        folder.mkdir()
        for name in original.name, PLUGIN:
            shutil.copy2(original.parent / name, folder)
        self.program_path = str(folder / original.name)
        return folder

    def replace(self, content):
        """As package managers do it."""
        new = Path(self.program_path + ".new")
        shutil.copy2(self.program_path, new)
        new.write_bytes(content)
        new.replace(self.program_path)

    def wait_for_program(self, path):
        self.desktop.wait(lambda: self.executable() == str(path), what="the new program")
        self.wait_for_item_in("xfce4", PATIENCE)

    def choose_notification(self):
        rect = self.wait_for(self.notification).rect
        self.tool("mousemove", rect.x + rect.width // 2, rect.y + rect.height // 2, "click", 2)
        self.wait_for_end_of(self.notification)

    def executable(self):
        return os.readlink(f"/proc/{self.program.pid}/exe")

    def test_restart(self):
        self.open_desktop("xfce4")
        self.start_bare_bus("system", "package_service.py")
        self.install()
        self.start_readable()
        self.wait_for_item_in("xfce4", PATIENCE)
        self.replace(Path(self.program_path).read_bytes() + b"newer")
        self.assertNotEqual(self.executable(), self.program_path)

        self.click_title()
        self.open_settings()
        self.act("page tab: About")
        self.click_on("push button: Check for Updates…")
        self.click_on("push button: Restart Now")
        self.wait_for_program(self.program_path)
        self.stop()

    def test_offers_restart(self):
        self.open_desktop("xfce4")
        self.desktop.spawn(["dunst"], "dunst")
        self.desktop.environment["QT_LOGGING_RULES"] = "meterkin.updates=true"
        folder = self.install()
        program = Path(self.program_path).read_bytes()
        self.start()
        self.wait_for_item_in("xfce4", PATIENCE)
        self.replace(program)
        self.desktop.wait(lambda: "another program: false" in self.complaints())
        self.assertIsNone(self.notification())
        self.replace(program + b"newer")
        self.choose_notification()
        self.wait_for_program(self.program_path)

        said = subprocess.run([self.program_path, "--version"], check=True, capture_output=True)
        build = b"-".join(re.findall(rb"[\w.-]*\d[\w.-]*", said.stdout))
        self.program_path = str(folder / "other")
        shutil.copy2(self.executable(), self.program_path)
        Path(self.program_path).write_bytes(program.replace(build, b"9" + build[1:]))
        self.assertEqual(self.launch("second").wait(PATIENCE), 0)
        self.assertRegex(self.complaints("second"), f"{build.decode()} is running.*\n\\Z")
        self.wait_for(self.popover)
        self.choose_notification()
        self.wait_for_program(self.program_path)
        self.stop(warning=r"(meterkin\.updates: .*\n)+")

    def test_missing_windows(self):
        plugins = subprocess.run(["qtpaths6", "--query", "QT_INSTALL_PLUGINS"], check=True,
                                 stdout=subprocess.PIPE, text=True).stdout.strip()
        plugin = Path(self.program_path).with_name(PLUGIN).read_bytes()
        of_another_build = re.sub(rb"(\.WindowPlugin/).", rb"\g<1>9", plugin)
        for said, name, content in (
                ("WindowPlugin/9", PLUGIN, of_another_build),
                ("meterkin-windows", PLUGIN, b"damaged " * 1000),
                ("is not installed", "qt.conf",
                 f"[Paths]\nPlugins={plugins}\nQmlImports=/none\n".encode())):
            with self.subTest(said):
                self.open_desktop("xfce4")
                self.desktop.spawn(["dunst"], "dunst")
                file = self.install() / name
                original = file.read_bytes() if file.exists() else b""
                file.write_bytes(content)
                self.start()
                self.wait_for_item_in("xfce4", PATIENCE)
                self.click_title()
                self.wait_for(self.notification)
                file.write_bytes(original)
                if "WindowPlugin" in said:
                    self.choose_notification()
                    self.wait_for_item_in("xfce4", PATIENCE)
                if name == PLUGIN:
                    self.click_title()
                    self.wait_for(self.popover)
                self.wait_for_item_in("xfce4", PATIENCE)
                self.stop(warning=rf"meterkin\.windows: .*{said}.*\n")


if __name__ == "__main__":
    unittest.main()
