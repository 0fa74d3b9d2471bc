"""Processors, memory and fans that are made up, for a program that is started on them."""
import os
import shutil
import subprocess
from pathlib import Path


class Hardware:
    """Made-up hardware that can change while the program runs on it."""

    TOTAL = 16 * 1024 * 1024    # KiB
    # all that a kernel of today tells, in its order
    MEMINFO = """MemTotal MemFree MemAvailable Buffers Cached SwapCached Active Inactive
        Active(anon) Inactive(anon) Active(file) Inactive(file) Unevictable Mlocked SwapTotal
        SwapFree Zswap Zswapped Dirty Writeback AnonPages Mapped Shmem KReclaimable Slab
        SReclaimable SUnreclaim KernelStack PageTables SecPageTables NFS_Unstable Bounce
        WritebackTmp CommitLimit Committed_AS VmallocTotal VmallocUsed VmallocChunk Percpu
        AnonHugePages ShmemHugePages ShmemPmdMapped FileHugePages FilePmdMapped HugePages_Total
        HugePages_Free HugePages_Rsvd HugePages_Surp Hugepagesize Hugetlb DirectMap4k DirectMap2M
        DirectMap1G"""
    PLACES = {"stat": "/proc/stat", "meminfo": "/proc/meminfo", "class": "/sys/class"}

    def __init__(self, folder, cores=2):
        self.folder = Path(folder)
        self.ticks = [[1000, 0, 1000, 5000] for _ in range(cores)]      # user, nice, system, idle
        (self.folder / "class" / "hwmon").mkdir(parents=True)
        self.set_memory(42)
        self.run_processor(0, 0)

    def command_prefix(self, *parts):
        """What to put before a command so that it finds these parts made up, or all: a private
        mount namespace; without privileges through a user namespace, left again for our own user,
        whom the session bus knows."""
        attempt = subprocess.run(["unshare", "-m", "true"], stderr=subprocess.DEVNULL)
        privileged = attempt.returncode == 0
        leave = "" if privileged else \
            f"unshare --user --map-user={os.geteuid()} --map-group={os.getegid()} "
        mounts = [f'mount --bind "$0/{part}" {self.PLACES[part]} &&'
                  for part in parts or self.PLACES]
        return ["unshare", "-m" if privileged else "-rm", "sh", "-c",
                f'{" ".join(mounts)} exec {leave}"$@"', str(self.folder)]

    def write(self, name, text):
        """In place and in one go: the file may be mounted and read at any moment."""
        file = os.open(self.folder / name, os.O_RDWR | os.O_CREAT, 0o644)
        data = text.encode()
        os.pwrite(file, data, 0)
        os.ftruncate(file, len(data))
        os.close(file)

    def set_memory(self, percent):
        available = int(self.TOTAL * (100 - percent) / 100)
        known = {"MemTotal": self.TOTAL, "MemFree": available // 2, "MemAvailable": available,
                 "Buffers": 90000, "Cached": available // 3, "Active": 2000000,
                 "Inactive": 1000000, "Shmem": 20000, "Slab": 300000, "SReclaimable": 200000,
                 "SUnreclaim": 100000, "KernelStack": 9000, "PageTables": 30000, "Percpu": 4000}
        lines = {name: known.get(name, 0) for name in self.MEMINFO.split()}
        self.write("meminfo", "".join(f"{key + ':':16}{value:>8} kB\n"
                                      for key, value in lines.items()))

    def lose_memory(self):
        self.write("meminfo", "")

    def run_processor(self, busy, idle):
        """Lets that many ticks pass on every core."""
        self.run_cores([(busy, idle)] * len(self.ticks))

    def run_cores(self, passed):
        """Lets ticks pass, busy and idle ones of each core."""
        for core, (busy, idle) in zip(self.ticks, passed):
            core[0] += busy
            core[3] += idle
        lines = {"cpu": map(sum, zip(*self.ticks))}
        lines |= {f"cpu{number}": core for number, core in enumerate(self.ticks)}
        self.write("stat", "".join(f"{name} {' '.join(map(str, numbers))} 0 0 0 0 0 0\n"
                                   for name, numbers in lines.items()) + "intr 0\nctxt 0\n")

    def set_fan(self, rpm):
        folder = self.folder / "class" / "hwmon" / "hwmon0"
        folder.mkdir(exist_ok=True)
        for name, value in (("name", "nct6775"), ("fan1_min", 600), ("fan1_max", 6000),
                            ("fan1_input", rpm)):
            self.write(f"class/hwmon/hwmon0/{name}", f"{value}\n")

    def lose_fan(self):
        shutil.rmtree(self.folder / "class" / "hwmon" / "hwmon0")
