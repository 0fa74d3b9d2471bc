"""What the scripts that measure the program share: starting it, and its figures seen from outside."""
import ctypes
import os
import subprocess
import time
from pathlib import Path

from panels import PANELS, XEMBED

IN_ACCESS = 1
LABEL = "meterkin: "    # what the name of the title's window begins with


class AccessCounter:
    """Counts how often a file is read. To be asked before a second read can follow: the kernel
    makes one event of two that are alike."""

    def __init__(self, path):
        libc = ctypes.CDLL(None, use_errno=True)
        self.events = libc.inotify_init1(os.O_NONBLOCK | os.O_CLOEXEC)
        if self.events < 0 or libc.inotify_add_watch(self.events, os.fsencode(path), IN_ACCESS) < 0:
            raise OSError(ctypes.get_errno(), "cannot watch the made-up memory")
        self.total = 0

    def update(self):
        try:
            self.total += len(os.read(self.events, 4096)) // 16     # bytes an event
        except BlockingIOError:
            pass


def release_build():
    """The program, built and with all that it takes to run it on a private desktop."""
    root = Path(__file__).resolve().parents[1]
    subprocess.run([root / "scripts/bootstrap", "build", "run", "desktop", "test"], check=True)
    subprocess.run([root / "scripts/build", "release", "meterkin"], check=True)
    return root / "build/release/meterkin"


def start_program(desktop, command, **settings):
    """Starts the program; in an X11 tray, waits for its title."""
    file = Path(desktop.environment["XDG_CONFIG_HOME"]) / "meterkin" / "meterkin.conf"
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text("".join(f"{key}={value}\n"
                            for key, value in ({"onboardingShown": "true"} | settings).items()))
    process = desktop.spawn(command, "program")
    if PANELS[desktop.panel_kind].tray == XEMBED:
        desktop.wait(lambda: title_window(desktop) or is_over(desktop, process),
                     what="the title in the panel")
    return process


def is_over(desktop, process):
    """False; raises RuntimeError when the program has ended."""
    if process.poll() is not None:
        raise RuntimeError(f"the program ended with status {process.returncode}\n"
                           f"{desktop.report()}")
    return False


def title_window(desktop):
    return next((window for window in desktop.x.windows()
                 if window.viewable and window.name.startswith(LABEL)), None)


def memory_of(pid):
    """Lines of smaps_rollup, in KiB: Rss, Private_Dirty and more."""
    lines = Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]
    return {name.rstrip(":"): int(size) for name, size, _ in map(str.split, lines)}


def threads_of(pid):
    return os.listdir(f"/proc/{pid}/task")


def switches_of(pid):
    """Context switches of all threads there are, wanted and forced ones."""
    return sum(int(line.split()[1]) for thread in threads_of(pid)
               for line in Path(f"/proc/{pid}/task/{thread}/status").read_text().splitlines()
               if "voluntary_ctxt_switches" in line)


def processor_time_of(pid):
    """Nanoseconds of all threads, ended ones too. The number is the kernel's for the clock of
    another process, as clock_getcpuclockid() makes it."""
    return time.clock_gettime_ns(~pid << 3 | 2)
