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


if __name__ == "__main__":
    unittest.main()
