"""The disk image that the program was installed from, on real loop devices."""
import os
import shutil
import subprocess
import time
import unittest
from pathlib import Path

from smoke_case import SmokeCase

WAIT = 8.0      # seconds from the launch to the clean-up
BUNDLE = "Meterkin"


@unittest.skipUnless(os.geteuid() == 0 and Path("/dev/loop-control").exists(),
                     "only root attaches disk images")
class DiskImage(SmokeCase):

    def setUp(self):
        super().setUp()
        self.open_desktop()
        self.home = Path(self.desktop.environment["HOME"])
        self.trash = Path(self.desktop.environment["XDG_DATA_HOME"]) / "Trash" / "files"
        installed = self.home / "Applications" / BUNDLE / "meterkin"
        installed.parent.mkdir(parents=True)
        shutil.copy2(self.program_path, installed)
        self.program_path = str(installed)

        # mounts that the machine does not see, and that go when their last process does
        self.mounts = self.desktop.spawn(["unshare", "-m", "sleep", "600"], "mounts")
        own = os.readlink("/proc/self/ns/mnt")
        self.desktop.wait(lambda: os.readlink(f"/proc/{self.mounts.pid}/ns/mnt") != own)
        self.inside = ["nsenter", f"--mount=/proc/{self.mounts.pid}/ns/mnt", "--"]

    def make_image(self, name, bundle=BUNDLE):
        content = self.desktop.folder / "content" / bundle
        content.mkdir(parents=True, exist_ok=True)
        image = self.home / "Downloads" / f"{name}.img"
        image.parent.mkdir(exist_ok=True)
        subprocess.run(["mkfs.ext4", "-q", "-d", str(content.parent), str(image), "2M"],
                       check=True, stdout=subprocess.DEVNULL)
        shutil.rmtree(content.parent)
        return image

    def attach(self, image):
        """As a device that does not free itself when it is unmounted; returns the device."""
        device = subprocess.run(["losetup", "--find", "--show", str(image)], check=True,
                                stdout=subprocess.PIPE, text=True).stdout.strip()

        def free():
            self.desktop.end(self.mounts)
            backing = Path("/sys/block", Path(device).name, "loop/backing_file")
            # the number may be another's by now; the desktop's folder is nobody else's
            if backing.exists() and str(self.desktop.folder) in backing.read_text():
                subprocess.run(["losetup", "--detach", device], check=False)
        self.addCleanup(free)
        return device

    def mount(self, image, source=None):
        point = self.desktop.folder / "media" / image.stem
        point.mkdir(parents=True)
        options = "ro" if source else "ro,loop"
        subprocess.run([*self.inside, "mount", "-o", options, source or str(image), str(point)],
                       check=True)
        return point

    def is_mounted(self, point):
        return f" {point} " in Path(f"/proc/{self.mounts.pid}/mounts").read_text()

    def trashed(self):
        return sorted(path.name for path in self.trash.glob("*"))

    def wait_for_trash(self, *names):
        self.desktop.wait(lambda: self.trashed() == sorted(names), what=f"trash of {names}")

    def test_left_over_images(self):
        foreign, unmounted = self.make_image("foreign", "Other"), self.make_image("unmounted")
        foreign_point = self.mount(foreign)
        self.attach(unmounted)
        ours = {self.attach(image): image for image in map(self.make_image, ("one", "two"))}
        points = {image: self.mount(image, device) for device, image in ours.items()}
        number = lambda device: int(device.removeprefix("/dev/loop"))  # noqa: E731
        first, second = (ours[device] for device in sorted(ours, key=number))

        # quitting does not wait for the clean-up
        self.start(self.inside)
        self.wait_for_item()
        before = time.monotonic()
        self.stop()
        self.assertLess(time.monotonic() - before, WAIT / 2)
        self.assertEqual(self.trashed(), [])

        launched = time.monotonic()
        self.start(self.inside)
        self.wait_for_trash(first.name)
        self.assertGreaterEqual(time.monotonic() - launched, WAIT)
        self.assertFalse(self.is_mounted(points[first]))
        self.desktop.wait(lambda: not self.devices_of(self.trash / first.name), what="free device")
        self.assertTrue(self.is_mounted(points[second]) and self.is_mounted(foreign_point))
        self.stop()

        # the next launch meets the other one, and cannot detach it
        busy = self.desktop.spawn([*self.inside, "sh", "-c", 'cd "$0" && exec sleep 600',
                                   str(points[second])], "busy")
        self.desktop.wait(lambda: os.readlink(f"/proc/{busy.pid}/cwd") == str(points[second]))
        self.start(self.inside)
        self.wait_for_trash(first.name, second.name)
        self.assertTrue(self.is_mounted(points[second]))
        self.assertTrue(self.devices_of(self.trash / second.name))
        self.assertTrue(foreign.exists() and unmounted.exists())
        self.stop()

    @staticmethod
    def devices_of(image):
        return subprocess.run(["losetup", "--associated", str(image)], check=True,
                              stdout=subprocess.PIPE, text=True).stdout


if __name__ == "__main__":
    unittest.main()
