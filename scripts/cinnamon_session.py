"""Cinnamon, whose panel takes XEmbed items."""
import ast
import json
import re

from real_session import BACKGROUND, RealSession, SessionWindow
from x_display import Rect

WINDOWS = """
global.get_window_actors().filter(actor => actor.visible).map(actor => {
    const window = actor.meta_window, rect = window.get_frame_rect();
    return [window.title, [rect.x, rect.y, rect.width, rect.height], window.has_focus(),
            !window.is_skip_taskbar() && !window.is_override_redirect()];
})
"""


class Cinnamon(RealSession):
    NAME = "cinnamon"
    MODES = ("x11",)
    PORTAL = "gtk"

    def start_session(self):
        self.environment |= {"XDG_CURRENT_DESKTOP": "X-Cinnamon", "GSETTINGS_BACKEND": "keyfile",
                             "DISPLAY": self.outer}
        self.start_bus(services=(
            "ca.desrt.dconf", "org.a11y.Bus", "org.cinnamon.CalendarServer",
            "org.freedesktop.portal.Desktop", "org.freedesktop.impl.portal.desktop.gtk",
            "org.freedesktop.impl.portal.PermissionStore"))
        self.set("org.cinnamon.desktop.background", "picture-options", "none")
        self.set("org.cinnamon.desktop.background", "primary-color", "#%02x%02x%02x" % BACKGROUND)
        self.start_panel()
        self.wait(lambda: self.evaluate("Main.panelManager.panels.filter(p => p).length"),
                  what="the panel")
        self.wait(self.has_panel, what="the tray")

    def set(self, schema, key, value):
        self.run("gsettings", "set", schema, key, value)

    def evaluate(self, source):
        answer = self.call("org.Cinnamon", "/org/Cinnamon", "org.Cinnamon.Eval", source)
        match = re.fullmatch(r"\(true, (['\"].*['\"])\)\s*", answer, re.DOTALL)
        text = ast.literal_eval(match[1]) if match else ""
        return json.loads(text) if text else None

    def windows(self):
        return [SessionWindow(title or "", Rect(*rect), has_keyboard, is_listed)
                for title, rect, has_keyboard, is_listed in self.evaluate(WINDOWS) or ()]

    def move(self, title, x, y):
        self.evaluate(f"""global.get_window_actors().map(actor => actor.meta_window)
            .find(window => window.title === "{title}").move_frame(true, {x}, {y})""")

    def panel_rect(self):
        height = int(self.evaluate("Main.panelManager.panels.filter(p => p)[0].height"))
        return Rect(0, self.height - height, self.width, height)

    def has_panel(self):
        return bool(self.screen.selection_owner("_NET_SYSTEM_TRAY_S0"))

    # --- what the desktop can change -----------------------------------------------------------

    def set_dark(self, is_dark):
        self.set("org.gnome.desktop.interface", "color-scheme",
                 "prefer-dark" if is_dark else "default")

    def end_panel(self):
        self.end(self.panel)
        self.wait(lambda: not self.has_panel(), what="the end of the tray")

    def start_panel(self):
        self.panel = self.spawn(["cinnamon", "--replace"], "shell")
