"""A desktop of its own: home folder, session bus, display, window manager and one panel, shut off
from the session it is started from. Nothing of it outlives the process that started it, however
that ends."""
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

from marked_processes import MARK, end_marked, start_guard
from panels import NOTIFIER, PANELS, XEMBED, i3_settings
from x_display import Image, Rect, Window, XDisplay

WIDTH, HEIGHT = 1280, 720
BACKGROUND = 0x5B7083
NOBODY = 65534
PATIENCE = 60.0     # seconds; what has not come by then never will
WATCHER = "org.kde.StatusNotifierWatcher"

# What the surrounding session says about itself must not reach the private one.
FOREIGN = ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS",
           "SESSION_MANAGER", "DESKTOP_SESSION", "I3SOCK", "SWAYSOCK", "GDK_BACKEND")
FOREIGN_PREFIXES = ("XDG_", "QT_", "GTK_", "LC_")


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


class Desktop:
    """An X display under openbox (i3 for its own bar), or a headless sway when it is for waybar,
    which may have an X display for programs that want one."""

    def __init__(self, wayland=False, xwayland=False):
        self.wayland = wayland
        self.folder = Path(tempfile.mkdtemp(prefix="meterkin-desktop-"))
        self.guard = start_guard(self.folder)
        self.environment = self.private_environment()
        self.processes = []
        self.panel = self.panel_kind = self.manager = self.manager_kind = self.bus = None
        self.x = None
        try:
            if not wayland:
                self.start_x()
            self.start_bus()
            if wayland:
                self.start_sway(xwayland)
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *error):
        self.close()

    def close(self):
        if self.guard is None:
            return
        if self.x:
            self.x.close()
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

    def report(self):
        """The last lines of every log."""
        parts = []
        for path in sorted(self.folder.glob("*.log")):
            lines = path.read_text(errors="replace").splitlines()[-8:]
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

    def start_x(self):
        _, number = self.answer(
            ["Xvfb", "-displayfd", "{fd}", "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
             "-nolisten", "tcp", "-noreset"], "xvfb")
        self.environment["DISPLAY"] = f":{number}"
        self.x = XDisplay(f":{number}")
        self.x.paint_background(BACKGROUND)

    def start_bus(self):
        self.bus, address = self.answer(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address={fd}"], "dbus")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def start_sway(self, xwayland):
        run = self.folder / "sway"
        run.mkdir(mode=0o700)
        settings = run / "config"
        told = run / "told"
        # for us, who are another user when we are root
        opened = "xhost +local: > /dev/null &&" if xwayland else ""
        settings.write_text(f"output * resolution {WIDTH}x{HEIGHT}\n"
                            f"xwayland {'enable' if xwayland else 'disable'}\n"
                            f"exec {opened} echo $DISPLAY $SWAYSOCK > {told}.new && "
                            f"mv {told}.new {told}\n")
        other_user = {}
        if os.geteuid() == 0:       # sway refuses to run as root; its clients do not mind
            other_user = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
            self.folder.chmod(0o711)
            os.chown(run, NOBODY, NOBODY)
        self.manager = self.spawn(
            ["sway", "-c", str(settings)], "sway",
            {"XDG_RUNTIME_DIR": str(run), "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
             "WLR_LIBINPUT_NO_DEVICES": "1"}, cwd=run, **other_user)
        self.manager_kind = "sway"
        self.wait(told.exists, what="sway's displays")
        *display, self.environment["SWAYSOCK"] = told.read_text().split()
        socket = next(path for path in run.glob("wayland-*") if path.is_socket())
        self.environment |= {"WAYLAND_DISPLAY": str(socket), "XDG_SESSION_TYPE": "wayland"}
        if display:
            self.environment["DISPLAY"] = display[0]
            self.x = XDisplay(display[0])

    def start_manager(self, kind):
        """openbox, or i3 in its place: its bar works with no other window manager."""
        if kind == self.manager_kind:
            return
        if self.manager:
            self.end(self.manager)
        self.manager_kind = kind
        if kind == "i3":
            socket = self.folder / "i3.socket"
            socket.unlink(missing_ok=True)
            self.environment["I3SOCK"] = str(socket)
            settings = i3_settings(self.environment, self.folder)
            self.manager = self.spawn(["i3", "-c", settings], "i3")
            self.wait(lambda: self.run("i3-msg", "-t", "get_version"), what="i3's socket")
        else:
            self.manager = self.spawn([kind], kind)
            self.wait(self.window_manager_name, what="the window manager")

    def window_manager_name(self):
        return self.x.selection_owner("WM_S0")

    # --- panels --------------------------------------------------------------------------------

    def start_panel(self, kind):
        """Starts a panel without waiting for its tray; "none" leaves the desktop bare."""
        assert self.panel is None, "one panel at a time"
        panel = PANELS.get(kind)
        if not self.wayland:
            self.start_manager(panel.session if panel else "openbox")
        if panel:
            self.panel_kind = kind
            self.panel = self.spawn(panel.configure(self.environment, self.folder), kind)

    def end_panel(self, number=signal.SIGTERM):
        self.end(self.panel, number)
        self.wait(lambda: not self.tray_is_there(), what=f"the end of {self.panel_kind}'s tray")
        self.panel = self.panel_kind = None

    def kill_panel(self):
        self.end_panel(signal.SIGKILL)

    def tray_is_there(self):
        """Whether the panel's tray takes items now."""
        tray = PANELS[self.panel_kind].tray
        if tray == XEMBED:
            return bool(self.x.selection_owner("_NET_SYSTEM_TRAY_S0"))
        assert tray == NOTIFIER
        return self.name_has_owner(WATCHER)

    def wait_for_tray(self):
        self.wait(self.tray_is_there, what=f"the tray of {self.panel_kind}")

    def name_has_owner(self, name):
        return "true" in self.run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                                  "--object-path", "/", "--method",
                                  "org.freedesktop.DBus.NameHasOwner", name)

    # --- windows and pictures ------------------------------------------------------------------

    def windows(self):
        """Every window there is, the screen first; without an X display those that sway knows."""
        if self.x:
            return self.x.windows()
        found, todo = [], [json.loads(self.run("swaymsg", "-t", "get_tree"))]
        while todo:
            node = todo.pop()
            rect = Rect(**node["rect"])
            found.append(Window(node["id"], node["name"], rect, node.get("visible", False),
                                override_redirect=False, parent=0))
            todo += node["nodes"] + node["floating_nodes"]
        return found

    def screenshot(self, rect=None):
        if not self.wayland:
            return self.x.image(rect)
        done = subprocess.run(["grim", "-t", "ppm", "-"], env=self.environment, check=True,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=PATIENCE)
        image = Image.from_ppm(done.stdout)
        return image.crop(rect) if rect else image

    def is_painted(self, window):
        """Whether a window can be seen and is more than one even colour."""
        if not window.viewable:
            return False
        pixels = self.screenshot().crop(window.rect).pixels()
        return any(pixel != pixels[0] for pixel in pixels)
