"""What the real sessions share: a display around them, whose pointer, keys and picture are those of
a person in front of the screen, and a system bus with a login service."""
import re
from typing import NamedTuple

from private_home import PrivateHome
from x_display import Rect, XDisplay

WIDTH, HEIGHT = 1280, 800
BACKGROUND = (0x5B, 0x70, 0x83)
PORTALS = "/usr/share/xdg-desktop-portal/portals"


class SessionWindow(NamedTuple):
    """A window as the compositor lists it."""
    title: str
    rect: Rect              # with the frame that the compositor draws, without the program's shadow
    has_keyboard: bool
    is_in_task_bar: bool


class RealSession(PrivateHome):
    """A session of the class's kind in one of its modes: "x11"; "wayland", which has Xwayland;
    "native", which has not."""
    TELLS_BACKGROUND = True     # whether a program can know what the panel looks like
    NAME = ""
    MODES = ()
    PORTAL = ""         # the portal's backend
    NOTIFICATION_BUTTON = 1     # chooses what a notification offers first
    PANEL_CHANGES = 2
    BACK_WITHIN = 3.0   # seconds until the title is in a panel that is there

    def __init__(self, mode, size=(WIDTH, HEIGHT)):
        assert mode in self.MODES
        self.mode = mode
        self.width, self.height = size
        self.screen = None
        super().__init__()

    def start(self):
        # not the program's display, unless the session is one of X11
        self.outer = self.start_x(self.width, self.height)
        self.screen = XDisplay(self.outer)
        temporary, portals = self.folder / "tmp", self.folder / "portals"
        temporary.mkdir()
        portals.mkdir()
        (portals / f"{self.PORTAL}.portal").symlink_to(f"{PORTALS}/{self.PORTAL}.portal")
        self.environment |= {
            "TMPDIR": str(temporary), "XDG_DESKTOP_PORTAL_DIR": str(portals),
            "XDG_SESSION_TYPE": "x11" if self.mode == "x11" else "wayland",
            "LIBGL_ALWAYS_SOFTWARE": "1"}
        for key in ("NO_AT_BRIDGE", "GTK_A11Y"):
            self.environment.pop(key)
        self.start_bus("system")
        self.spawn(["/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"],
                   "logind")
        self.wait(lambda: self.call("org.freedesktop.login1", "/org/freedesktop/login1",
                                    "org.freedesktop.DBus.Peer.Ping", bus="system"),
                  what="the login service")
        self.start_session()

    def start_session(self):
        """Brings the desktop up, until its panel takes items."""
        raise NotImplementedError

    def close(self):
        if self.screen:
            self.screen.close()
            self.screen = None
        super().close()

    # --- buses ---------------------------------------------------------------------------------

    def call(self, name, path, method, *arguments, bus="session"):
        """The answer as gdbus prints it, nothing when there is none."""
        return self.run("gdbus", "call", f"--{bus}", "--timeout", "10", "--dest", name,
                        "--object-path", path, "--method", method, *arguments, seconds=15)

    def has_tray(self):
        return "true" in self.call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                   "org.freedesktop.DBus.Properties.Get",
                                   "org.kde.StatusNotifierWatcher",
                                   "IsStatusNotifierHostRegistered")

    def items(self):
        """The process numbers of the programs that have an item in the tray."""
        answer = self.call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                           "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierWatcher",
                           "RegisteredStatusNotifierItems")
        found = []
        for item in re.findall(r"'([^']*)'", answer):
            owner = self.call("org.freedesktop.DBus", "/",
                              "org.freedesktop.DBus.GetConnectionUnixProcessID",
                              re.split("[/@]", item)[0])
            found += [int(number) for number in re.findall(r"uint32 (\d+)", owner)]
        return found

    # --- what is seen and done in front of the screen ------------------------------------------

    def windows(self):
        """All windows that are shown, by the compositor's own list."""
        raise NotImplementedError

    def move(self, title, x, y):
        raise NotImplementedError

    def panel_rect(self):
        raise NotImplementedError

    def picture(self, rect=None):
        return self.screen.image(rect)

    def own_picture(self, title):
        """What a window on the session's X display has drawn, whatever the screen shows of it."""
        if "DISPLAY" not in self.environment:
            return None
        display = XDisplay(self.environment["DISPLAY"])
        try:
            window = next((w for w in display.windows() if w.name == title and w.viewable), None)
            return window and display.image(window=window.id)
        finally:
            display.close()

    def tool(self, *words):
        """The pointer and the keyboard, by xdotool's words."""
        self.run("env", f"DISPLAY={self.outer}", "xdotool", *map(str, words))

    def point_at(self, x, y):
        self.screen.point_at(int(x), int(y))

    # --- what sessions differ in ---------------------------------------------------------------

    def quieten(self):
        """Puts away what the desktop itself has to say after a start."""

    def set(self, schema, key, value):
        """A setting of GNOME's or of whoever has taken them over."""
        self.run("gsettings", "set", schema, key, value)

    def set_dark(self, is_dark):
        self.set("org.gnome.desktop.interface", "color-scheme",
                 "prefer-dark" if is_dark else "default")

    def has_panel(self):
        return self.has_tray()

    def without_hot_key(self):
        """Why there may be no global hot key, None where there has to be one."""
        return None

    def is_starting_something(self):
        """Whether the pointer is shown busy for a program that is being activated; None where
        nobody tells."""
        return None
