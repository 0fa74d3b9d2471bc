"""Processors, memory and fans that are made up, for a program that is started on them."""
import os
import subprocess
from pathlib import Path


class Hardware:
    """Made-up hardware that can change while the program runs on it."""

    TOTAL = 16 * 1024 * 1024    # KiB
    # a private mount namespace; without privileges through a user namespace, left again for our own
    # user, whom the session bus knows
    SCRIPT = ('mount --bind "$0/stat" /proc/stat && mount --bind "$0/meminfo" /proc/meminfo &&'
              ' mount --bind "$0/class" /sys/class && exec {}"$@"')

    def __init__(self, folder):
        self.folder = Path(folder)
        self.ticks = [1000, 0, 1000, 5000]      # user, nice, system, idle
        (self.folder / "class" / "hwmon").mkdir(parents=True)
        self.set_memory(42)
        self.run_processor(0, 0)

    def command_prefix(self):
        attempt = subprocess.run(["unshare", "-m", "true"], stderr=subprocess.DEVNULL)
        privileged = attempt.returncode == 0
        leave = "" if privileged else \
            f"unshare --user --map-user={os.geteuid()} --map-group={os.getegid()} "
        return ["unshare", "-m" if privileged else "-rm", "sh", "-c", self.SCRIPT.format(leave),
                str(self.folder)]

    def write(self, name, text):
        """In place and in one go: the file may be mounted and read at any moment."""
        file = os.open(self.folder / name, os.O_RDWR | os.O_CREAT, 0o644)
        data = text.encode()
        os.pwrite(file, data, 0)
        os.ftruncate(file, len(data))
        os.close(file)

    def set_memory(self, percent):
        available = self.TOTAL * (100 - percent) // 100
        lines = {"MemTotal": self.TOTAL, "MemFree": available // 2, "MemAvailable": available,
                 "Buffers": 90000, "Cached": available // 3, "SwapCached": 0, "Active": 2000000,
                 "Inactive": 1000000, "SwapTotal": 0, "SwapFree": 0, "Shmem": 20000, "Slab": 300000,
                 "SReclaimable": 200000, "SUnreclaim": 100000, "KernelStack": 9000,
                 "PageTables": 30000, "Percpu": 4000}
        self.write("meminfo", "".join(f"{key + ':':16}{value:>8} kB\n"
                                      for key, value in lines.items()))

    def lose_memory(self):
        self.write("meminfo", "")

    def run_processor(self, busy, idle):
        """Lets that many ticks pass."""
        self.ticks[0] += busy
        self.ticks[3] += idle
        user, nice, system, idle = self.ticks
        self.write("stat", "".join(
            f"{name} {user * n} {nice * n} {system * n} {idle * n} 0 0 0 0 0 0\n"
            for name, n in (("cpu", 2), ("cpu0", 1), ("cpu1", 1))) + "intr 0\nctxt 0\n")

    def set_fan(self, rpm):
        folder = self.folder / "class" / "hwmon" / "hwmon0"
        folder.mkdir(exist_ok=True)
        for name, value in (("name", "nct6775"), ("fan1_min", 600), ("fan1_max", 6000),
                            ("fan1_input", rpm)):
            self.write(f"class/hwmon/hwmon0/{name}", f"{value}\n")
