"""Cinnamon, whose panel takes XEmbed items."""
from shell_session import ShellSession
from x_display import Rect


class Cinnamon(ShellSession):
    SERVICE, IS_OFF_TASK_BAR = "org.Cinnamon", "window.is_skip_taskbar()"
    SCHEMA = "org.cinnamon.desktop.background"
    NAME = "cinnamon"
    TELLS_BACKGROUND = False
    MODES = ("x11",)
    PORTAL = "gtk"

    def start_session(self):
        self.environment |= {"XDG_CURRENT_DESKTOP": "X-Cinnamon", "GSETTINGS_BACKEND": "keyfile",
                             "DISPLAY": self.outer}
        self.start_bus(services=(
            "ca.desrt.dconf", "org.a11y.Bus", "org.cinnamon.CalendarServer",
            "org.freedesktop.portal.Desktop", "org.freedesktop.impl.portal.desktop.gtk",
            "org.freedesktop.impl.portal.PermissionStore"))
        self.paint_background()
        self.start_panel()
        self.wait(lambda: self.evaluate("Main.panelManager.panels.filter(p => p).length"),
                  what="the panel")
        self.wait(self.has_panel, what="the tray")

    def panel_rect(self):
        height = int(self.evaluate("Main.panelManager.panels.filter(p => p)[0].height"))
        return Rect(0, self.height - height, self.width, height)

    def has_panel(self):
        return bool(self.screen.selection_owner("_NET_SYSTEM_TRAY_S0"))

    # --- what the desktop can change -----------------------------------------------------------

    def end_panel(self):
        self.end(self.panel)
        self.wait(lambda: not self.has_panel(), what="the end of the tray")

    def start_panel(self):
        self.panel = self.spawn(["cinnamon", "--replace"], "shell")
