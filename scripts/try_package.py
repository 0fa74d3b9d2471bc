"""A package in a root folder of its own, on the machine's X server, compositor and panels: for
try-package, which see."""
import os
import re
import shutil
import subprocess
import sys
import time
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "Tests" / "Smoke"))
from test_disk_image import DiskImage  # noqa: E402
from window_case import WindowCase  # noqa: E402

ROOT = Path("/mnt/bare")
APPDIR = ROOT / "opt/Meterkin.AppDir"
PROGRAMS = {"deb": ROOT / "usr/bin/meterkin", "appdir": APPDIR / "AppRun"}
RECOMMENDED = "qt6-wayland"
QML_MODULE = "qml6-module-qtquick-templates"    # what the dashboard can do without
# What starts an AppImage does so, for the content that it has mounted.
APPIMAGE = f"""#!/bin/sh
APPIMAGE=$(realpath "$0") APPDIR={APPDIR} exec {APPDIR}/AppRun "$@"
"""


def do(*command):
    done = subprocess.run(command, env=os.environ | {"LC_ALL": "C"}, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)}:\n{done.stdout}")
    return done.stdout


def do_inside(*command):
    return do("chroot", str(ROOT), *command)


class BareDesktop(WindowCase):
    def open_desktop(self, *panel):
        super().open_desktop(*panel)
        folder = str(self.desktop.folder)
        do_inside("mkdir", "-p", folder)
        do("mount", "--bind", folder, f"{ROOT}{folder}")
        self.program_path = self.program_path.removeprefix(str(ROOT))

    def launch(self, name="program", prefix=()):
        return super().launch(name, ["chroot", str(ROOT), *prefix])

    def start_in(self, panel):
        self.open_desktop(panel)
        begin = time.monotonic()
        self.start_readable()
        item = self.wait_for_item_in(panel, seconds=20)
        print(f"title in {panel} after {time.monotonic() - begin:.2f} s")
        return item

    def picture(self, name):
        folder = os.environ.get("METERKIN_PICTURES")
        if folder:
            self.desktop.screenshot().write_png(Path(folder) / f"{name}.png")


class Windows(BareDesktop):
    def check_libraries(self):
        """Of those of Qt, the program has what belongs to the package, and nothing else."""
        maps = Path(f"/proc/{self.program.pid}/maps").read_text()
        folders = {Path(path).parent for path in re.findall(r"(/\S*/libQt6\w+\.so\.6\S*)\n", maps)}
        self.assertEqual(len(folders), 1)
        self.assertEqual("Meterkin.AppDir" in str(*folders), APPDIR.exists())

    def test_in_an_x11_panel(self):
        self.start_in("xfce4")
        self.click_title()
        self.wait_for(self.popover)
        self.picture("x11-dashboard")
        self.open_settings()
        self.picture("x11-settings")
        self.act("check box: Launch at login", "Toggle")
        self.wait_for_setting("launchAtLogin", "false")
        self.check_libraries()
        self.stop()

    def test_in_wayland_panel(self):
        if not APPDIR.exists():
            do_inside("apt-get", "-y", "--no-install-recommends", "install", RECOMMENDED)
        item = self.start_in("waybar").notifier
        self.desktop.run("gdbus", "call", "--session", "--dest", item.bus, "--object-path",
                         item.path, "--method", "org.kde.StatusNotifierItem.Activate", "0", "0")
        self.desktop.wait(lambda: "push button: Open Settings" in self.shown(), what="dashboard")
        self.picture("wayland-dashboard")
        self.act("push button: Open Settings")
        self.wait_for(self.settings_window)
        self.picture("wayland-settings")
        self.check_libraries()
        self.stop()


class WithoutPart(BareDesktop):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        do_inside("dpkg", "--force-depends", "--remove", QML_MODULE)

    def test_title_alone(self):
        self.start_in("xfce4")
        self.click_title()
        self.desktop.wait(self.popover, what="the dashboard")
        self.key("Tab", "Return")
        self.desktop.wait(self.complaints, what="a complaint")
        self.stays_away(self.settings_window)
        self.wait_for_item_in("xfce4")
        self.picture("without-a-part")
        self.stop(warning=".*; its window stays closed\n")


class InstalledFolder(DiskImage):
    def put_bundle(self, folder):
        shutil.copytree(APPDIR, folder / APPDIR.name, symlinks=True)
        return folder / APPDIR.name / "usr/bin/meterkin"


class InstalledFile(DiskImage):
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


def install_deb(file):
    shutil.copy("/etc/resolv.conf", ROOT / "etc/resolv.conf")
    shutil.copy(file, ROOT / "opt")
    do_inside("apt-get", "update")
    said = do_inside("apt-get", "--no-install-recommends", "-y", "install", f"/opt/{file.name}")
    print(*re.findall(r"^(?:\d+ upgraded|Need to get|After this).*", said, re.MULTILINE), sep="\n")


def main():
    kind, file = sys.argv[1], Path(sys.argv[2])
    os.environ["METERKIN_PROGRAM"] = str(PROGRAMS[kind])
    if kind == "deb":
        install_deb(file)
        cases = Windows, WithoutPart
    else:
        do("tar", "-x", "-f", str(file), "-C", str(APPDIR.parent))
        cases = Windows, InstalledFolder, InstalledFile
    load = unittest.defaultTestLoader.loadTestsFromTestCase
    done = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite(map(load, cases)))
    return 0 if done.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
