"""The global hot key, pressed on real servers and under real window managers."""
import ctypes
import unittest

from smoke_case import PATIENCE, SmokeCase
from window_case import WindowCase
from x_display import Id, Pointer, XDisplay

M, CONTROL_ALT, NUM_LOCK = 58, 0x0C, 0x10      # as the X server counts
STAYS = 0.7     # seconds; more than one repeat and the popover's animation


class OtherProgram(XDisplay):
    """A program that wants the key for itself."""

    def __init__(self, name):
        super().__init__(name)
        self.library.XGrabKey.argtypes = (Pointer, ctypes.c_int, ctypes.c_uint, Id, ctypes.c_int,
                                          ctypes.c_int, ctypes.c_int)
        self.library.XPending.argtypes = (Pointer,)

    def takes(self, key, modifiers):
        errors = []
        handler = self.ErrorHandler(lambda display, error: errors.append(error) or 0)
        self.library.XSetErrorHandler(handler)
        self.library.XGrabKey(self.display, key, modifiers, self.root, False, 1, 1)
        self.library.XSync(self.display, False)
        self.library.XSetErrorHandler(self.ignore_errors)
        return not errors

    def was_pressed(self):
        return self.library.XPending(self.display) > 0


class TestHotkey(WindowCase):
    settings = SmokeCase.settings | {
        "hotkeyEnabled": "true", "hotkeyKeyCode": 46, "hotkeyModifiers": 0x1800}

    def start_on(self, host):
        self.open_desktop(host)
        self.start_and_wait()

    def start_and_wait(self):
        self.start()
        self.wait_for_item()
        self.tool("mousemove", 40, 300)     # nowhere near the title

    def other_program(self):
        other = OtherProgram(self.desktop.environment["DISPLAY"])
        self.addCleanup(other.close)
        return other

    def opens_with(self, keys):
        self.key(keys)
        self.wait_for(self.popover)

    def toggles_with(self, keys):
        self.opens_with(keys)
        self.key(keys)
        self.wait_for_end_of(self.popover)

    def comes_to_toggle_with(self, keys):
        """The grab follows a change of the keyboard within a moment, not at once."""
        for _ in range(8):
            self.key(keys)
            try:
                self.desktop.wait(self.popover, 2)
                break
            except TimeoutError:
                pass
        self.wait_for(self.popover)
        self.key(keys)
        self.wait_for_end_of(self.popover)

    def stays(self, window):
        with self.assertRaises(TimeoutError):
            self.desktop.wait(lambda: not window(), STAYS)

    def test_toggles_the_dashboard(self):
        for host in ("none", "i3bar"):      # openbox, i3
            with self.subTest(host):
                self.start_on(host)
                for lock in (None, "Num_Lock", "Caps_Lock"):
                    if lock:
                        self.key(lock)
                    self.toggles_with("ctrl+alt+m")
                self.desktop.run("xmodmap", "-e", "add mod3 = Scroll_Lock")
                self.key("Scroll_Lock")
                self.comes_to_toggle_with("ctrl+alt+m")
                self.key("Caps_Lock", "ctrl+m", "alt+m", "ctrl+alt+shift+m", "ctrl+alt+n")
                self.stays_away(self.popover)

                self.opens_with("ctrl+alt+m")   # has the keyboard
                self.key("Tab", "Return")
                self.wait_for(self.settings_window)
                self.toggles_with("ctrl+alt+m")     # over a window of our own
                self.stop()

    def test_held_on(self):
        self.start_on("none")
        # slower than the popover's animation, so that each repeat would show
        self.desktop.run("xset", "r", "rate", "200", "4")
        self.tool("keydown", "ctrl", "keydown", "alt", "keydown", "m")
        self.wait_for(self.popover)
        self.stays(self.popover)
        self.tool("keyup", "m", "keydown", "m")
        self.wait_for_end_of(self.popover)
        self.stays_away(self.popover)
        self.tool("keyup", "m", "keyup", "alt", "keyup", "ctrl")
        self.toggles_with("ctrl+alt+m")
        self.stop()

    def test_stays_where_it_is_on_the_keyboard(self):
        evdev = ("setxkbmap", "us", "-keycodes", "evdev")
        xfree86 = ("setxkbmap", "us", "-keycodes", "xfree86")
        move_alt = ("xmodmap", "-e", "clear mod1", "-e", "add mod3 = Alt_L")
        right_of_tab, page_down = 12, 121
        for key_code, changes in (
                (right_of_tab, ((("setxkbmap", "fr"), "24"), (("setxkbmap", "us"), "24"))),
                (page_down, ((evdev, "117"), (xfree86, "105"), (move_alt, "105"), (evdev, "117")))):
            self.settings = self.settings | {"hotkeyKeyCode": key_code}
            self.start_on("none")
            for change, key in changes:
                with self.subTest(change):
                    self.desktop.run(*change)
                    self.comes_to_toggle_with(f"ctrl+alt+{key}")
            self.stop()

    def test_recorded_on_a_server_of_other_codes(self):
        self.settings = self.settings | {"hotkeyKeyCode": 0}
        self.open_desktop("xfce4")
        self.desktop.run("setxkbmap", "us", "-keycodes", "xfree86")
        self.start_readable()
        self.wait_for_item_in("xfce4", PATIENCE)
        self.click_title()
        self.open_settings()
        self.click_on("push button: Record")
        self.desktop.run("xset", "r", "rate", "100", "25")
        self.tool("keydown", "ctrl", "keydown", "98")
        self.wait_for_setting("hotkeyKeyCode", "126")
        self.stays_away(self.popover)       # though the key repeats
        self.tool("keyup", "98", "keyup", "ctrl")
        self.toggles_with("ctrl+98")
        self.stop()

    def test_is_another_programs(self):
        self.open_desktop("none")
        other = self.other_program()
        # one combination out of several is enough
        self.assertTrue(other.takes(M, CONTROL_ALT | NUM_LOCK))
        self.start_and_wait()
        self.key("ctrl+alt+m")
        self.stays_away(self.popover)
        self.assertTrue(other.takes(M, CONTROL_ALT))
        self.key("ctrl+alt+m")
        self.desktop.wait(other.was_pressed)
        other.close()

        # nobody tells that it is free again
        self.comes_to_toggle_with("ctrl+alt+m")
        last = self.other_program()
        self.assertFalse(last.takes(M, CONTROL_ALT | NUM_LOCK))
        self.stop(warning=r"meterkin\.hotkey: The hot key Ctrl\+Alt\+M .* another program .*\n")
        # the server may see to the others first
        self.desktop.wait(lambda: last.takes(M, CONTROL_ALT | NUM_LOCK))


if __name__ == "__main__":
    unittest.main()
