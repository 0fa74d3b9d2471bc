"""A desktop of its own: session bus, display, window manager and one panel."""
import json
import os
import signal
import subprocess

from panels import NOTIFIER, PANELS, XEMBED, i3_settings
from private_home import PATIENCE, PrivateHome
from x_display import Image, Rect, Window, XDisplay

WIDTH, HEIGHT = 1280, 720
BACKGROUND = 0x5B7083
NOBODY = 65534
WATCHER = "org.kde.StatusNotifierWatcher"
# what the panels and those who read the screen need of the machine's
SERVICES = ("org.a11y.Bus", "org.xfce.Xfconf", "ca.desrt.dconf", "org.mate.panel.applet.*")


class Desktop(PrivateHome):
    """An X display under openbox (i3 for its own bar), or a headless sway when it is for waybar,
    which may have an X display for programs that want one."""

    def __init__(self, wayland=False, xwayland=False):
        self.wayland, self.xwayland = wayland, xwayland
        self.panel = self.panel_kind = self.manager = self.manager_kind = self.bus = None
        self.x = None
        super().__init__()

    def start(self):
        if not self.wayland:
            self.show_x(self.start_x(WIDTH, HEIGHT))
            self.x.paint_background(BACKGROUND)
        self.bus = self.start_bus(services=SERVICES)
        if self.wayland:
            self.start_sway(self.xwayland)

    def close(self):
        if self.x:
            self.x.close()
        super().close()

    # --- servers -------------------------------------------------------------------------------

    def show_x(self, name):
        self.environment["DISPLAY"] = name
        self.x = XDisplay(name)

    def start_sway(self, xwayland):
        run = self.folder / "sway"
        run.mkdir(mode=0o700)
        settings = run / "config"
        told = run / "told"
        # for us, who are another user when we are root
        opened = "xhost +local: > /dev/null &&" if xwayland else ""
        settings.write_text(f"output * resolution {WIDTH}x{HEIGHT}\n"
                            f"xwayland {'enable' if xwayland else 'disable'}\n"
                            # of its bar, which the desktop starts when it is the panel
                            "bar tray {\nworkspace_buttons no\nswaybar_command true\n}\n"
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
            self.show_x(display[0])

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
