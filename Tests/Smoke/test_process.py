"""How the program starts and ends."""
import os
import signal
import subprocess
import tempfile
import unittest

from smoke_case import PATIENCE, SmokeCase
from private_desktop import NOBODY


class TestProcess(SmokeCase):
    def test_one_of_many_starts_survives(self):
        self.open_desktop()
        display = self.desktop.environment["DISPLAY"]
        starts = [self.launch(prefix=["env", f"DISPLAY={display}{screen}"])
                  for screen in ("", ".0") * 10]
        self.desktop.wait(lambda: sum(start.poll() is None for start in starts) == 1)
        self.program = next(start for start in starts if start.poll() is None)
        self.wait_for_item()
        self.assertEqual(sum(start.poll() == 0 for start in starts), len(starts) - 1)
        self.stop(signal.SIGINT)

        self.start()
        self.wait_for_item()
        self.program.send_signal(signal.SIGSTOP)
        self.assertEqual(self.launch("second").wait(PATIENCE), 1)
        self.assertEqual(len(self.complaints("second").splitlines()), 1)
        self.program.send_signal(signal.SIGCONT)
        self.stop(signal.SIGHUP)

    def test_answers_where_it_cannot_run(self):
        for words, status, said in (
                (["--version"], 0, r"^meterkin \d+\.\d+\S*( \([0-9a-f]+(-dirty)?\))?\n$"),
                (["--help"], 0, "--version"), (["--no-such"], 2, "no-such"), ([], 1, "display")):
            with self.subTest(words), tempfile.TemporaryDirectory() as home:
                done = subprocess.run(
                    [self.program_path, *words], capture_output=True, text=True, timeout=PATIENCE,
                    env={"HOME": home, "XDG_RUNTIME_DIR": home, "WAYLAND_DISPLAY": "wayland-9"})
                self.assertEqual(done.returncode, status)
                self.assertRegex(done.stderr if status else done.stdout, said)
                self.assertEqual(len(done.stderr.splitlines()), 1 if status else 0)
                self.assertEqual(os.listdir(home), [])

    def test_says_why_it_does_not_start(self):
        self.open_desktop()
        other = self.desktop.folder / "other"
        other.mkdir()
        refused = [("descriptors", ["prlimit", "--nofile=16"])]
        if os.geteuid() == 0:
            os.chown(other, NOBODY, NOBODY)
            refused.append(("root", ["env", f"XDG_CONFIG_HOME={other / 'new'}"]))
        for word, prefix in refused:
            with self.subTest(word):
                self.assertEqual(self.launch(word, prefix).wait(PATIENCE), 1)
                self.assertRegex(self.complaints(word), f"^meterkin: .*{word}.*\n$")


if __name__ == "__main__":
    unittest.main()
