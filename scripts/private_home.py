"""A place of its own to run programs in: home folder, environment, processes and buses, shut off
from the session it is started from. Nothing of it outlives the process that started it, however
that ends."""
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

from marked_processes import MARK, end_marked, marked_processes, start_guard

PATIENCE = 60.0     # seconds; what has not come by then never will
SERVICES = Path("/usr/share/dbus-1/services")

# What the surrounding session says about itself must not reach the private one.
FOREIGN = ("LANGUAGE", "DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS",
           "SESSION_MANAGER", "DESKTOP_SESSION", "I3SOCK", "SWAYSOCK", "GDK_BACKEND")
FOREIGN_PREFIXES = ("XDG_", "QT_", "GTK_", "LC_", "KDE_", "GNOME_")

# Lets everybody do everything.
BUS = """<busconfig><type>session</type><listen>unix:dir={folder}</listen><auth>EXTERNAL</auth>
<servicedir>{folder}</servicedir><policy context="default"><allow user="*"/><allow own="*"/>
<allow eavesdrop="true"/><allow send_destination="*" eavesdrop="true"/></policy></busconfig>"""


def wait(condition, seconds=PATIENCE, what="a condition", pause=0.02):
    """The first true value of the condition; TimeoutError when there is none in time."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimeoutError(f"{what}: not within {seconds:g} s")
        time.sleep(pause)


class PrivateHome:
    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="meterkin-desktop-"))
        self.guard = start_guard(self.folder)
        self.environment = self.private_environment()
        self.processes = []
        try:
            self.start()
        except BaseException:
            self.close()
            raise

    def start(self):
        """Starts what the place consists of."""

    def __enter__(self):
        return self

    def __exit__(self, *error):
        self.close()

    def close(self):
        if self.guard is None:
            return
        end_marked(str(self.folder))
        for process in self.processes:
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
        os.close(self.guard)
        self.guard = None

    # --- processes -----------------------------------------------------------------------------

    def private_environment(self):
        environment = {key: value for key, value in os.environ.items()
                       if key not in FOREIGN and not key.startswith(FOREIGN_PREFIXES)}
        home, run = self.folder / "home", self.folder / "run"
        environment |= {
            MARK: str(self.folder), "HOME": str(home), "LANG": "C.UTF-8",
            "XDG_RUNTIME_DIR": str(run), "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_CACHE_HOME": str(home / ".cache"), "XDG_DATA_HOME": str(home / ".local/share"),
            "XDG_STATE_HOME": str(home / ".local/state"),
            # the machine's own services must not be seen, least of all changed
            "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={run}/no-system-bus",
            # no accessibility bus, no virtual file systems, no OpenGL: they only cost time here
            "NO_AT_BRIDGE": "1", "GTK_A11Y": "none", "GIO_USE_VFS": "local", "GDK_GL": "disable",
        }
        for key in ("XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"):
            Path(environment[key]).mkdir(parents=True)
        run.mkdir(mode=0o700)
        return environment

    def log(self, name):
        return self.folder / f"{name}.log"

    def spawn(self, command, name, environment=None, **options):
        """Starts a command on the desktop; what it says goes to the log of that name."""
        if not shutil.which(command[0]):
            raise FileNotFoundError(f"{command[0]} is not installed")
        with open(self.log(name), "ab") as log:
            options = {"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log,
                       "cwd": self.environment["HOME"], "start_new_session": True} | options
            process = subprocess.Popen(
                command, env=self.environment | (environment or {}), **options)
        self.processes.append(process)
        return process

    def run(self, *command, seconds=PATIENCE):
        """The standard output of a command that ends by itself, or nothing when it fails."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=seconds)
        return done.stdout.decode("utf-8", "replace") if done.returncode == 0 else ""

    def pids(self):
        """Everything that runs here, also what others started."""
        return marked_processes(str(self.folder))

    @staticmethod
    def end(process, number=signal.SIGTERM, patience=3.0):
        """Ends a process of ours and returns its status."""
        if process.poll() is None:
            process.send_signal(number)
        try:
            return process.wait(patience)
        except subprocess.TimeoutExpired:
            process.kill()
            return process.wait()

    def report(self, count=8):
        """The last lines of every log."""
        parts = []
        for path in sorted(self.folder.glob("*.log")):
            lines = path.read_text(errors="replace").splitlines()[-count:]
            parts += [f"{path.stem}: {line}" for line in lines]
        return "\n".join(parts)

    def wait(self, condition, seconds=PATIENCE, what="a condition", pause=0.02):
        try:
            return wait(condition, seconds, what, pause)
        except TimeoutError as error:
            raise TimeoutError(f"{error}\n{self.report()}") from None

    def answer(self, command, name):
        """Starts a server that writes one line, its address, to a file descriptor."""
        reader, writer = os.pipe()
        process = self.spawn([part.format(fd=writer) for part in command], name, pass_fds=[writer])
        os.close(writer)
        with open(reader, encoding="utf-8") as lines:
            line = lines.readline().strip()
        if not line:
            raise RuntimeError(f"{name} does not start\n{self.report()}")
        return process, line

    # --- servers -------------------------------------------------------------------------------

    def start_x(self, width, height):
        """A display without a window manager; its name."""
        _, number = self.answer(
            ["Xvfb", "-displayfd", "{fd}", "-screen", "0", f"{width}x{height}x24",
             "-nolisten", "tcp", "-noreset"], "xvfb")
        return f":{number}"

    def start_bus(self, kind="session", services=()):
        """A "session" or "system" bus. It starts these services of the machine (patterns) where
        they are installed, and no others: those of other desktops would get in the way."""
        folder = Path(tempfile.mkdtemp(prefix=f"{kind}-bus-", dir=self.folder))
        folder.chmod(0o711)     # for the user whom a test gives the place to
        for pattern in services:
            for file in SERVICES.glob(f"{pattern}.service"):
                (folder / file.name).symlink_to(file)
        settings = folder / "settings"
        settings.write_text(BUS.format(folder=folder))
        bus, self.environment[f"DBUS_{kind.upper()}_BUS_ADDRESS"] = self.answer(
            ["dbus-daemon", f"--config-file={settings}", "--nofork", "--nopidfile",
             "--print-address={fd}"], f"{kind}-bus")
        return bus

    def name_has_owner(self, name):
        return "true" in self.run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                                  "--object-path", "/", "--method",
                                  "org.freedesktop.DBus.NameHasOwner", name)
