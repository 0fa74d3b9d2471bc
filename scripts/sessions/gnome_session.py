"""GNOME Shell with the AppIndicator extension."""
import json
import re
from pathlib import Path

from shell_session import ShellSession
from x_display import Rect

EXTENSION = "ubuntu-appindicators@ubuntu.com"
READER = "reader@meterkin"      # lets us ask the shell
READER_SOURCE = """
function init() {}
function enable() { global.context.unsafe_mode = true; }
function disable() { global.context.unsafe_mode = false; }
"""

class Gnome(ShellSession):
    SERVICE, IS_OFF_TASK_BAR = "org.gnome.Shell", "window.skip_taskbar"
    SCHEMA = "org.gnome.desktop.background"
    NAME = "gnome"
    MODES = ("x11", "wayland", "native")
    PORTAL = "gnome"
    PANEL_CHANGES = 5       # what is lost is lost now and then

    def start_session(self):
        self.environment |= {"XDG_CURRENT_DESKTOP": "GNOME", "GSETTINGS_BACKEND": "keyfile"}
        if self.mode == "x11":
            self.environment["DISPLAY"] = self.outer
        else:
            self.environment["WAYLAND_DISPLAY"] = "wayland-0"
        # without the service of notifications, which is a program of its own, there are none
        self.start_bus(services=(
            "org.gnome.Shell.Notifications", "org.gnome.Shell.Extensions", "ca.desrt.dconf",
            "org.a11y.Bus", "org.freedesktop.portal.Desktop",
            "org.freedesktop.impl.portal.desktop.gnome", "org.freedesktop.impl.portal.desktop.gtk",
            "org.freedesktop.impl.portal.PermissionStore"))
        self.install_reader()
        self.set("org.gnome.shell", "enabled-extensions", str([EXTENSION, READER]))
        self.set("org.gnome.desktop.notifications", "show-banners", "false")
        self.set("org.gnome.shell", "welcome-dialog-last-shown-version", "99")
        self.paint_background()
        self.start_shell()

    def install_reader(self):
        folder = Path(self.environment["XDG_DATA_HOME"]) / "gnome-shell" / "extensions" / READER
        folder.mkdir(parents=True)
        (folder / "extension.js").write_text(READER_SOURCE)
        (folder / "metadata.json").write_text(json.dumps(
            {"uuid": READER, "name": READER, "description": READER,
             "shell-version": ["43"]}))

    def start_shell(self):
        options = {"x11": ["--x11"], "wayland": ["--wayland", "--nested"],
                   "native": ["--wayland", "--nested", "--no-x11"]}[self.mode]
        size = f"{self.width}x{self.height}"
        self.spawn(["gnome-shell", *options], "shell",
                   {"DISPLAY": self.outer, "MUTTER_DEBUG_DUMMY_MODE_SPECS": size})
        self.wait(lambda: "GNOME Shell started" in self.log("shell").read_text(errors="replace"),
                  what="the shell")
        self.wait(self.has_tray, what="the tray")
        # the session starts in the overview
        self.wait(lambda: self.evaluate("Main.overview.hide(), Main.overview.visible") is False,
                  what="the desktop")
        if self.mode == "wayland":
            log = self.log("shell").read_text(errors="replace")
            self.environment["DISPLAY"] = re.search(r"public X11 display (:\d+)", log)[1]
            self.environment["XAUTHORITY"] = str(next(
                (self.folder / "run").glob(".mutter-Xwaylandauth.*")))

    # --- what the desktop can change -----------------------------------------------------------

    def end_panel(self):
        self.set("org.gnome.shell", "enabled-extensions", str([READER]))
        self.wait(lambda: not self.has_tray(), what="the end of the tray")

    def start_panel(self):
        self.set("org.gnome.shell", "enabled-extensions", str([EXTENSION, READER]))

    def panel_rect(self):
        return Rect(0, 0, self.width, int(self.evaluate("Main.panel.height")))

    def without_hot_key(self):
        return None if self.mode == "x11" else "GNOME 43's portal has no GlobalShortcuts"

    def is_starting_something(self):
        return self.evaluate("""imports.gi.Shell.WindowTracker.get_default()
            .get_startup_sequences().filter(sequence => !sequence.get_completed()).length""")

    def quieten(self):
        # that root has logged in, and that nothing can lock the screen
        self.set("org.gnome.desktop.notifications", "show-banners", "true")
