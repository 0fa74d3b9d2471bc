"""What GNOME Shell and Cinnamon share: one program of JavaScript, which answers questions in it."""
import ast
import json
import re

from real_session import BACKGROUND, RealSession, SessionWindow
from x_display import Rect

WINDOWS = """
global.get_window_actors().filter(actor => actor.visible).map(actor => {
    const window = actor.meta_window, rect = window.get_frame_rect();
    return [window.title, [rect.x, rect.y, rect.width, rect.height], window.has_focus(),
            !%s && !window.is_override_redirect()];
})
"""
MOVE = """
global.get_window_actors().map(actor => actor.meta_window)
    .find(window => window.title === "%s").move_frame(true, %d, %d)
"""


class ShellSession(RealSession):
    SERVICE = ""        # its name on the bus, whose last part names all else there
    IS_OFF_TASK_BAR = ""    # of a window, in JavaScript
    SCHEMA = ""         # the settings' that the backdrop is in

    def evaluate(self, source):
        """The value of JavaScript in the shell, None when it has none."""
        path = "/" + self.SERVICE.replace(".", "/")
        answer = self.call(self.SERVICE, path, f"{self.SERVICE}.Eval", source)
        match = re.fullmatch(r"\(true, (['\"].*['\"])\)\s*", answer, re.DOTALL)
        text = ast.literal_eval(match[1]) if match else ""
        return json.loads(text) if text else None

    def windows(self):
        return [SessionWindow(title or "", Rect(*rect), has_keyboard, is_listed)
                for title, rect, has_keyboard, is_listed in
                self.evaluate(WINDOWS % self.IS_OFF_TASK_BAR) or ()]

    def move(self, title, x, y):
        self.evaluate(MOVE % (title, x, y))

    def paint_background(self):
        for key in ("picture-uri", "picture-uri-dark"):
            self.set(self.SCHEMA, key, "")
        self.set(self.SCHEMA, "picture-options", "none")
        self.set(self.SCHEMA, "primary-color", "#%02x%02x%02x" % BACKGROUND)
