"""Runs a command on a private desktop with the panel of one's choice."""
import argparse
import os
import signal
import subprocess
import sys
import time

from panels import PANELS, is_on_wayland
from private_desktop import Desktop

SETTLE_SECONDS = 2.5
ENDING = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)


def options():
    parser = argparse.ArgumentParser(prog="desktop", description=__doc__)
    parser.add_argument("panel", choices=[*PANELS, "none"])
    parser.add_argument("--screenshot", metavar="FILE", help="write a PNG of the desktop there")
    parser.add_argument("--window", metavar="TEXT",
                        help="take it once a window is seen whose name begins with this")
    parser.add_argument("--seconds", type=float,
                        help="end after this time; without it at once when standard input is not a "
                             "terminal, else when interrupted")
    parser.add_argument("command", nargs="+", metavar="COMMAND", help="after --")
    return parser.parse_args()


class Interrupted(Exception):
    """A signal asked us to end; its number is the argument."""


def interrupt(number, frame):
    # once is enough: a second Ctrl-C must not break into the tidying up
    for other in ENDING:
        signal.signal(other, signal.SIG_IGN)
    raise Interrupted(number)


def run_on(desktop, wanted):
    """Starts panel and command; returns the command's status, 0 when it still runs in the end."""
    desktop.start_panel(wanted.panel)
    if desktop.panel:
        desktop.wait_for_tray()
    program = desktop.spawn(wanted.command, "program", stdout=None, stderr=None, cwd=None)

    try:
        look(desktop, program, wanted)
        return program.poll() or 0
    finally:
        desktop.end(program)    # before the display that it shows itself on


def look(desktop, program, wanted):
    def shown():
        if program.poll() is not None:
            raise RuntimeError(f"{wanted.command[0]} ended with status {program.returncode}")
        return [window.rect for window in desktop.x.windows()
                if window.name.startswith(wanted.window) and desktop.is_painted(window)]

    def settled():
        # panels rearrange themselves around an item that has just come, and windows draw in
        before = shown()
        time.sleep(SETTLE_SECONDS)
        return before and shown() == before

    if wanted.window:
        desktop.wait(settled, 20, f'a window named "{wanted.window}"')
    if wanted.seconds is not None:
        end_of(program, wanted.seconds)
    if wanted.screenshot:
        desktop.screenshot().write_png(wanted.screenshot)
        print(f"Screenshot: {os.path.relpath(wanted.screenshot)}", flush=True)
    if wanted.seconds is None and sys.stdin.isatty():
        end_of(program, None)


def end_of(program, seconds):
    try:
        program.wait(seconds)
    except subprocess.TimeoutExpired:
        pass


def main():
    wanted = options()
    for number in ENDING:
        signal.signal(number, interrupt)
    try:
        with Desktop(wayland=is_on_wayland(wanted.panel)) as desktop:
            return run_on(desktop, wanted)
    except Interrupted as interruption:
        return 128 + interruption.args[0]
    except (OSError, RuntimeError) as error:
        print(f"desktop: {error}", file=sys.stderr)
        return 1
