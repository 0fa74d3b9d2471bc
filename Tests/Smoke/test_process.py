"""How the program starts and ends."""
import signal
import unittest

from smoke_case import PATIENCE, SmokeCase


class TestProcess(SmokeCase):
    def test_signals_end_it_cleanly(self):
        for number in (signal.SIGINT, signal.SIGHUP):
            with self.subTest(number.name):
                self.open_desktop("tint2")
                self.start()
                self.wait_for_item_in("tint2", PATIENCE)
                self.stop(number)

    def test_hotkey_out_of_range(self):
        self.open_desktop()
        for key in ("hotkeyKeyCode", "hotkeyModifiers"):
            for value in (-1, 2 ** 32):
                with self.subTest(key=key, value=value):
                    self.write_settings(**{key: value})
                    name = f"{key}{value}"
                    self.assertNotEqual(self.launch(name).wait(PATIENCE), 0)
                    said = self.complaints(name).splitlines()
                    self.assertEqual(len(said), 1, said)
                    self.assertIn(key, said[0])
                    self.assertIn(str(self.settings_file()), said[0])


if __name__ == "__main__":
    unittest.main()
