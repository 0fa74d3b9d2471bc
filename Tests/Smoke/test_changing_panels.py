"""Panels that crash, restart or give way to another kind."""
import os
import unittest

from smoke_case import PATIENCE, SmokeCase, client


class TestChangingPanels(SmokeCase):
    def test_panel_swapped_for_another_kind(self):
        self.open_desktop("tint2")
        self.start()
        self.wait_for_item_in("tint2", PATIENCE)
        for host in ("lxqt", "xfce4", "lxqt", "none", "mate", "i3bar"):
            if self.desktop.panel:
                self.desktop.end_panel()
            self.start_panel(host)
            self.wait_for_item_in(host)
            self.wait_for_color("green")
        self.stop()

    def test_nothing_piles_up_over_restarts(self):
        for host in ("tint2", "lxqt"):
            with self.subTest(host):
                self.open_desktop(host)
                self.start()
                self.wait_for_item_in(host, PATIENCE)
                for restart in range(20):
                    self.wait_for_item_in(host)
                    if restart == 3:
                        before = self.belongings()
                    self.desktop.kill_panel()
                    self.start_panel(host)
                self.wait_for_item_in(host)
                self.desktop.wait(
                    lambda: all(now <= then for now, then in zip(self.belongings(), before)),
                    what=f"no more files, threads and windows than {before}")
                self.stop()

    def belongings(self):
        """Open files, threads and windows of the program."""
        process = f"/proc/{self.program.pid}"
        windows = self.desktop.x.windows()
        ours = {client(window.id) for window in windows if "meterkin" in window.name.lower()}
        return (len(os.listdir(f"{process}/fd")), len(os.listdir(f"{process}/task")),
                sum(client(window.id) in ours for window in windows))


if __name__ == "__main__":
    unittest.main()
