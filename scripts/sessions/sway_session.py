"""sway with Waybar, with its own bar, or without any tray."""
import json
import os

import panels
from private_desktop import NOBODY
from real_session import BACKGROUND, RealSession, SessionWindow
from x_display import Rect


class Sway(RealSession):
    NAME = "sway"
    TELLS_BACKGROUND = False
    MODES = ("wayland", "native", "swaybar", "no-tray")
    PORTAL = "gtk"
    NOTIFICATION_BUTTON = 2     # of dunst

    def start_session(self):
        self.environment |= {"XDG_CURRENT_DESKTOP": "sway", "GSETTINGS_BACKEND": "keyfile"}
        self.start_sway()
        self.start_bus(services=(
            "ca.desrt.dconf", "org.a11y.Bus", "org.freedesktop.portal.Desktop",
            "org.freedesktop.impl.portal.desktop.gtk",
            "org.freedesktop.impl.portal.PermissionStore"))
        self.spawn(["dunst"], "dunst")
        self.start_panel()
        if self.mode != "no-tray":
            self.wait(self.has_tray, what="the tray")

    def start_sway(self):
        run = self.folder / "sway"
        run.mkdir(mode=0o700)
        told = run / "told"
        settings = run / "config"
        # for us, who are another user when we are root
        opened = "xhost +local: > /dev/null &&" if self.mode == "wayland" else ""
        settings.write_text(f"""
            output * resolution {self.width}x{self.height}
            output * background #{'%02x%02x%02x' % BACKGROUND} solid_color
            xwayland {'enable' if self.mode == 'wayland' else 'disable'}
            focus_follows_mouse no
            floating_modifier none
            bar {{
                id bar
                position bottom
                # the session starts it, so that it can end and restart it
                swaybar_command true
            }}
            for_window [title="."] floating enable
            exec {opened} echo $SWAYSOCK $DISPLAY > {told}.new && mv {told}.new {told}
            """)
        other_user = {}
        if os.geteuid() == 0:       # sway refuses to run as root; its clients do not mind
            other_user = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
            self.folder.chmod(0o711)
            os.chown(run, NOBODY, NOBODY)
            self.run("env", f"DISPLAY={self.outer}", "xhost", "+local:")
        self.spawn(["sway", "-c", str(settings)], "sway",
                   {"XDG_RUNTIME_DIR": str(run), "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman",
                    "DISPLAY": self.outer}, cwd=run, **other_user)
        self.wait(told.exists, what="sway's displays")
        self.environment["SWAYSOCK"], *display = told.read_text().split()
        socket = next(path for path in run.glob("wayland-*") if path.is_socket())
        self.environment["WAYLAND_DISPLAY"] = str(socket)
        if self.mode == "wayland":
            self.environment["DISPLAY"], = display

    def start_panel(self):
        if self.mode == "swaybar":
            command = ["swaybar", "-b", "bar"]
        elif self.mode == "no-tray":
            return
        else:
            command = panels.waybar(self.environment, self.folder)
        self.panel = self.spawn(command, "panel")

    def end_panel(self):
        self.end(self.panel)
        self.wait(lambda: not self.has_tray(), what="the end of the tray")

    def windows(self):
        found, todo = [], [json.loads(self.run("swaymsg", "-t", "get_tree"))]
        while todo:
            node = todo.pop()
            if node.get("visible") and node["pid"]:
                found.append(SessionWindow(node["name"] or "", Rect(**node["rect"]),
                                           node["focused"], False))
            todo += node["nodes"] + node["floating_nodes"]
        return found

    def move(self, title, x, y):
        self.run("swaymsg", f'[title="{title}"] move absolute position {x} {y}')

    def panel_rect(self):
        outputs = json.loads(self.run("swaymsg", "-t", "get_workspaces"))
        height = self.height - outputs[0]["rect"]["height"]
        return Rect(0, self.height - height, self.width, height)

    def without_hot_key(self):
        return "sway's portal has no GlobalShortcuts"
