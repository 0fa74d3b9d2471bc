"""The AppDir in a root folder without Qt, on the machine's own X server, compositor and panels, and in
an Applications folder: for try-appdir, which see."""
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "Tests" / "Smoke"))
import test_disk_image  # noqa: E402
from window_case import WindowCase  # noqa: E402

ROOT = Path(os.environ["METERKIN_ROOT"])
APPDIR = Path(os.environ["METERKIN_PROGRAM"]).parent
INSIDE = "/opt/Meterkin.AppDir"
# Runs in mounts of its own, which end with it. The desktop's folder is where it is outside.
ENTER = f"""set -e
mount --bind -o ro "$APPDIR" "$ROOT{INSIDE}"
for folder in proc sys dev; do mount --rbind /$folder "$ROOT/$folder"; done
mount -t tmpfs tmpfs "$ROOT/tmp"
mkdir -p "$ROOT$DESKTOP"
mount --bind "$DESKTOP" "$ROOT$DESKTOP"
exec chroot "$ROOT" "$@"
"""
# What starts an AppImage does so, for the content that it has mounted.
APPIMAGE = f"""#!/bin/sh
APPIMAGE=$(realpath "$0") APPDIR={APPDIR} exec {APPDIR}/AppRun "$@"
"""


class TestAppDir(WindowCase):
    def launch(self, name="program", prefix=()):
        places = [f"ROOT={ROOT}", f"APPDIR={APPDIR}", f"DESKTOP={self.desktop.folder}"]
        self.program_path = f"{INSIDE}/AppRun"
        return super().launch(name, ["env", *places, "unshare", "--mount", "sh", "-c", ENTER, "sh",
                                     "env", "-u", "ROOT", "-u", "APPDIR", "-u", "DESKTOP", *prefix])

    def picture(self, name):
        folder = os.environ.get("METERKIN_PICTURES")
        if folder:
            self.desktop.screenshot().write_png(Path(folder) / f"{name}.png")

    def check_libraries(self):
        """What the AppDir has, the program has from there."""
        bundled = {path.name for path in (APPDIR / "usr/lib").rglob("*.so*")}
        maps = Path(f"/proc/{self.program.pid}/maps").read_text()
        mapped = set(re.findall(r"(/\S*/([^/\s]+\.so[^/\s]*))\n", maps))
        self.assertTrue({"libQt6Gui.so.6", "meterkin-windows.so"} <= {name for _, name in mapped})
        self.assertEqual([path for path, name in mapped
                          if name in bundled and INSIDE not in path], [])

    def test_bare_desktop(self):
        found = subprocess.run(["find", str(ROOT), "-name", "libQt*"], stdout=subprocess.PIPE)
        self.assertEqual(found.stdout, b"")

    def test_x11(self):
        self.open_desktop("xfce4")
        self.start_readable()
        self.wait_for_item_in("xfce4", seconds=20)
        self.click_title()
        self.wait_for(self.popover)
        self.picture("x11-dashboard")
        self.open_settings()
        self.picture("x11-settings")
        self.act("check box: Launch at login", "Toggle")
        self.wait_for_setting("launchAtLogin", "false")
        self.check_libraries()
        self.stop()

    def test_wayland(self):
        self.open_desktop("waybar")
        self.start_readable()
        item = self.wait_for_item_in("waybar", seconds=20).notifier
        self.desktop.run("gdbus", "call", "--session", "--dest", item.bus, "--object-path",
                         item.path, "--method", "org.kde.StatusNotifierItem.Activate", "0", "0")
        self.desktop.wait(lambda: "push button: Open Settings" in self.shown(), what="dashboard")
        self.picture("wayland-dashboard")
        self.act("push button: Open Settings")
        self.wait_for(self.settings_window)
        self.picture("wayland-settings")
        self.check_libraries()
        self.stop()


class TestInstalledFolder(test_disk_image.DiskImage):
    def put_bundle(self, folder):
        shutil.copytree(APPDIR, folder / APPDIR.name, symlinks=True)
        return folder / APPDIR.name / "usr/bin/meterkin"


class TestInstalledFile(test_disk_image.DiskImage):
    def put_bundle(self, folder):
        folder.mkdir()
        file = folder / "Meterkin.AppImage"
        file.write_text(APPIMAGE)
        file.chmod(0o755)
        return file

    def test_login(self):
        self.start()
        entry = self.home / ".config/autostart/org.meterkin.Meterkin.desktop"
        self.desktop.wait(entry.exists, what="the autostart entry")
        self.assertIn(f'Exec="{self.program_path}"\n', entry.read_text())
        self.stop()


if __name__ == "__main__":
    unittest.main(verbosity=2)
