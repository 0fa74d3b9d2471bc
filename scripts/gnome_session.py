"""GNOME Shell with the AppIndicator extension."""
import ast
import json
import re
from pathlib import Path

from real_session import BACKGROUND, RealSession, SessionWindow
from x_display import Rect

EXTENSION = "ubuntu-appindicators@ubuntu.com"
READER = "reader@meterkin"      # lets us ask the shell
READER_SOURCE = """
function init() {}
function enable() { global.context.unsafe_mode = true; }
function disable() { global.context.unsafe_mode = false; }
"""
WINDOWS = """
global.get_window_actors().filter(actor => actor.visible).map(actor => {
    const window = actor.meta_window, rect = window.get_frame_rect();
    return [window.title, [rect.x, rect.y, rect.width, rect.height], window.has_focus(),
            !window.skip_taskbar && !window.is_override_redirect()];
})
"""


class Gnome(RealSession):
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
        for key in ("picture-uri", "picture-uri-dark"):
            self.set("org.gnome.desktop.background", key, "")
        self.set("org.gnome.desktop.background", "primary-color", "#%02x%02x%02x" % BACKGROUND)
        self.start_shell()

    def install_reader(self):
        folder = Path(self.environment["XDG_DATA_HOME"]) / "gnome-shell" / "extensions" / READER
        folder.mkdir(parents=True)
        (folder / "extension.js").write_text(READER_SOURCE)
        (folder / "metadata.json").write_text(json.dumps(
            {"uuid": READER, "name": READER, "description": READER,
             "shell-version": ["43"]}))

    def set(self, schema, key, value):
        self.run("gsettings", "set", schema, key, value)

    def start_shell(self):
        options = {"x11": ["--x11"], "wayland": ["--wayland", "--nested"],
                   "native": ["--wayland", "--nested", "--no-x11"]}[self.mode]
        self.spawn(["gnome-shell", *options], "shell",
                   {"DISPLAY": self.outer, "MUTTER_DEBUG_DUMMY_MODE_SPECS": f"{self.width}x{self.height}"})
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

    def evaluate(self, source):
        """The value of JavaScript in the shell, None when it has none."""
        answer = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Eval", source)
        match = re.fullmatch(r"\(true, (['\"].*['\"])\)\s*", answer, re.DOTALL)
        text = ast.literal_eval(match[1]) if match else ""
        return json.loads(text) if text else None

    def windows(self):
        return [SessionWindow(title or "", Rect(*rect), has_keyboard, is_listed)
                for title, rect, has_keyboard, is_listed in self.evaluate(WINDOWS) or ()]

    def move(self, title, x, y):
        self.evaluate(f"""global.get_window_actors().map(actor => actor.meta_window)
            .find(window => window.title === "{title}").move_frame(true, {x}, {y})""")

    # --- what the desktop can change -----------------------------------------------------------

    def set_dark(self, is_dark):
        self.set("org.gnome.desktop.interface", "color-scheme",
                 "prefer-dark" if is_dark else "default")

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
