"""Plasma: KWin and its shell, whose panel has the tray."""
import json
import re
import shutil
from pathlib import Path

from panels import write
from real_session import BACKGROUND, RealSession, SessionWindow
from x_display import Rect

PANEL_HEIGHT = 44
MARK = "what was asked:"
WINDOWS = """
const shown = workspace.clientList().filter(window =>
    !window.desktopWindow && !window.dock && !window.minimized);
console.info("%s" + JSON.stringify(shown.map(window => {
    const rect = window.frameGeometry;
    return [window.caption, [rect.x, rect.y, rect.width, rect.height].map(Math.round),
            window.active, !window.skipTaskbar];
})));
""" % MARK
MOVE = """
const wanted = workspace.clientList().find(window => window.caption === "%%s");
const rect = wanted.frameGeometry;
wanted.frameGeometry = {x: %%d, y: %%d, width: rect.width, height: rect.height};
console.info("%strue");
""" % MARK
BACKDROP = """
for (const desktop of desktops()) {
    desktop.wallpaperPlugin = "org.kde.color";
    desktop.currentConfigGroup = ["Wallpaper", "org.kde.color", "General"];
    desktop.writeConfig("Color", "%d,%d,%d");
}
""" % BACKGROUND


class Plasma(RealSession):
    NAME = "plasma"
    MODES = ("x11", "wayland", "native")
    PORTAL = "kde"
    BACK_WITHIN = 6.0       # the tray comes into the panel late

    def start_session(self):
        self.environment |= {
            "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5",
            "KDE_SESSION_UID": "0", "QT_QUICK_BACKEND": "software"}
        write(f"{self.environment['XDG_CONFIG_HOME']}/ksplashrc", """
            [KSplash]
            Engine=none
            Theme=None
            """)
        # what the bus starts must find the compositor, not the display around it
        if self.mode == "x11":
            self.environment["DISPLAY"] = self.outer
        else:
            self.environment["WAYLAND_DISPLAY"] = "wayland-0"
        self.start_bus(services=(
            "org.kde.ActivityManager", "org.kde.kded5", "org.kde.kglobalaccel", "org.a11y.Bus",
            "org.freedesktop.portal.Desktop", "org.freedesktop.impl.portal.desktop.kde",
            "org.freedesktop.impl.portal.PermissionStore"))
        if self.mode != "x11":
            self.start_compositor()
        self.run("kbuildsycoca5")
        self.spawn(["kded5"], "kded")
        if self.mode == "x11":
            self.spawn(["kwin_x11"], "kwin")
        self.start_panel()
        if self.mode != "native":
            self.spawn(["xembedsniproxy"], "xembed")    # as every Plasma session has
        self.wait(self.has_tray, what="the tray")
        self.wait(lambda: self.call("org.kde.plasmashell", "/PlasmaShell",
                                    "org.kde.PlasmaShell.evaluateScript", BACKDROP),
                  what="the shell")
        self.wait(lambda: self.picture().pixel(600, 300) == BACKGROUND, what="the backdrop")

    def start_compositor(self):
        # a copy is without the capability that not everybody may use
        program = shutil.copy("/usr/bin/kwin_wayland", self.folder / "kwin_wayland")
        xwayland = ["--xwayland"] if self.mode == "wayland" else []
        self.spawn([program, "--x11-display", self.outer, "--width", str(self.width),
                    "--height", str(self.height), "--socket", "wayland-0", *xwayland], "kwin",
                   {"WAYLAND_DISPLAY": "", "KWIN_COMPOSE": "Q"})
        self.wait((self.folder / "run" / "wayland-0").exists, what="the compositor")
        if xwayland:
            self.environment["DISPLAY"] = self.wait(self.xwayland_display, what="Xwayland")
            self.run("dbus-update-activation-environment", "DISPLAY")

    def xwayland_display(self):
        for pid in self.pids():
            try:
                program, *words = Path(f"/proc/{pid}/cmdline").read_text().split("\0")
            except OSError:
                continue
            if program.endswith("Xwayland"):
                return next((word for word in words if re.fullmatch(r":\d+", word)), None)
        return None

    def start_panel(self):
        self.panel = self.spawn(["plasmashell"], "shell")

    def end_panel(self):
        self.end(self.panel)
        self.wait(lambda: not self.name_has_owner("org.kde.plasmashell"),
                  what="the end of the panel")

    def run_in_compositor(self, source):
        """What a script of KWin's own says with console.info()."""
        file = self.folder / "script.js"
        file.write_text(source)
        before = self.log("kwin").stat().st_size
        number = re.search(r"\d+", self.call("org.kde.KWin", "/Scripting",
                                             "org.kde.kwin.Scripting.loadScript", str(file)))
        self.call("org.kde.KWin", f"/{number[0]}", "org.kde.kwin.Script.run")

        def told():
            with open(self.log("kwin"), "rb") as log:
                log.seek(before)
                for line in log.read().decode("utf-8", "replace").splitlines():
                    if MARK in line:
                        return line.partition(MARK)[2]
            return None
        answer = self.wait(told, 10, "KWin's answer")
        self.call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting.unloadScript", str(file))
        return json.loads(answer)

    def windows(self):
        return [SessionWindow(title, Rect(*rect), has_keyboard, is_listed)
                for title, rect, has_keyboard, is_listed in self.run_in_compositor(WINDOWS)]

    def move(self, title, x, y):
        self.run_in_compositor(MOVE % (title, x, y))

    def set_dark(self, is_dark):
        self.run("plasma-apply-colorscheme", "BreezeDark" if is_dark else "BreezeLight")

    def panel_rect(self):
        return Rect(0, self.height - PANEL_HEIGHT, self.width, PANEL_HEIGHT)

    def has_panel(self):
        return self.picture().pixel(600, self.height - 4) != BACKGROUND
