"""The disk image that the program was installed from, on real loop devices."""
import os
import shutil
import subprocess
import time
import unittest
from pathlib import Path

from smoke_case import SmokeCase

WAIT = 8.0      # seconds from the launch to the clean-up
BUNDLE = "Meterkin.AppDir"
NOBODY = 65534


@unittest.skipUnless(os.geteuid() == 0 and Path("/dev/loop-control").exists(),
                     "only root attaches disk images")
class DiskImage(SmokeCase):

    def setUp(self):
        super().setUp()
        self.open_desktop()
        self.home = Path(self.desktop.environment["HOME"])
        self.trash = Path(self.desktop.environment["XDG_DATA_HOME"]) / "Trash" / "files"
        self.original = self.program_path
        self.program_path = str(self.put_bundle(self.home / "Applications"))

        # mounts that the machine does not see, and that go when their last process does
        self.mounts = self.desktop.spawn(["unshare", "-m", "sleep", "600"], "mounts")
        own = os.readlink("/proc/self/ns/mnt")
        self.desktop.wait(lambda: os.readlink(f"/proc/{self.mounts.pid}/ns/mnt") != own)
        self.inside = ["nsenter", f"--mount=/proc/{self.mounts.pid}/ns/mnt", "--"]
        self.user = [*self.inside, "setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}",
                     "--clear-groups"]

    def start_service(self, devices):
        """Gives the desktop to an ordinary user, whose images a service detaches."""
        self.start_bare_bus("system", "storage_service.py", str(self.mounts.pid),
                            *(Path(device).name for device in devices))
        self.desktop.folder.chmod(0o711)
        for folder in (self.home, self.desktop.environment["XDG_RUNTIME_DIR"]):
            subprocess.run(["chown", "-R", f"{NOBODY}:{NOBODY}", str(folder)], check=True)

    def put_bundle(self, folder):
        """Installs the program there; returns its file."""
        entry = folder / BUNDLE / "usr/bin/meterkin"
        entry.parent.mkdir(parents=True)
        shutil.copy2(self.original, entry)
        (folder / BUNDLE / "AppRun").symlink_to("usr/bin/meterkin")
        return entry

    def make_image(self, name, change=b""):
        content = self.desktop.folder / "content"
        with open(self.put_bundle(content), "r+b") as file:
            file.seek(-len(change), os.SEEK_END)
            file.write(change)
        image = self.home / "Downloads" / f"{name}.img"
        image.parent.mkdir(exist_ok=True)
        size = sum(file.lstat().st_size for file in content.rglob("*")) // 2 ** 20 * 5 // 4 + 4
        subprocess.run(["mkfs.ext4", "-q", "-d", str(content), str(image), f"{size}M"],
                       check=True, stdout=subprocess.DEVNULL)
        shutil.rmtree(content)
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

    def mount(self, image, device):
        point = self.desktop.folder / "media" / image.stem
        point.mkdir(parents=True)
        subprocess.run([*self.inside, "mount", "-o", "ro", device, str(point)], check=True)
        return point

    def is_mounted(self, point):
        return f" {point} " in Path(f"/proc/{self.mounts.pid}/mounts").read_text()

    def trashed(self):
        return [path.name for path in self.trash.glob("*")]

    def test_left_over_image(self):
        images = [self.make_image("changed", change=b"!"), self.make_image("ours")]
        devices = list(map(self.attach, images))
        changed, ours = map(self.mount, images, devices)

        self.start(self.inside)     # as root, for whom nothing is put away
        time.sleep(WAIT + 2.0)
        self.stop()
        self.start_service(devices)
        self.start(self.user)
        time.sleep(1.0)
        before = time.monotonic()
        self.stop()     # quitting does not wait for the clean-up
        self.assertLess(time.monotonic() - before, WAIT / 2)
        self.assertEqual(self.trashed(), [])
        self.assertTrue(self.is_mounted(changed) and self.is_mounted(ours))

        launched = time.monotonic()
        self.start(self.user)
        self.desktop.wait(self.trashed, what="an image in the Trash")
        self.assertGreaterEqual(time.monotonic() - launched, WAIT)
        self.assertEqual(self.trashed(), ["ours.img"])
        self.assertTrue(self.is_mounted(changed) and not self.is_mounted(ours))
        self.desktop.wait(lambda: not Path("/sys/block", Path(devices[1]).name, "loop").exists(),
                          what="free device")
        self.assertTrue(images[0].exists())
        self.stop()


if __name__ == "__main__":
    unittest.main()
