"""Takes the program through real desktop sessions, brought up without a display, and tells what held.
Leaves a contact sheet and a table of each session in a folder; status 1 when anything fell short."""
import argparse
import signal
import subprocess
import sys
from pathlib import Path

from cinnamon_session import Cinnamon
from contact_sheet import write_sheet
from desktop import ENDING, Interrupted, interrupt
from gnome_session import Gnome
from measuring import release_build
from plasma_session import Plasma
from sway_session import Sway
from tour import HELD, NOT_THERE, SHORT, STEPS, Tour

PROJECT = Path(__file__).resolve().parents[2]
DESKTOPS = {kind.NAME: kind for kind in (Gnome, Plasma, Sway, Cinnamon)}
MARKS = {HELD: "✓", SHORT: "✗", NOT_THERE: "–"}


def options():
    modes = "\n".join(f"  {name}: {', '.join(kind.MODES)}" for name, kind in DESKTOPS.items())
    parser = argparse.ArgumentParser(
        prog="try-desktop", description=__doc__, epilog=f"modes:\n{modes}\n\nsteps:\n  " +
        "\n  ".join(STEPS), formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("desktop", choices=DESKTOPS)
    parser.add_argument("mode", nargs="?", help="without it all, one after the other")
    parser.add_argument("--program", metavar="FILE", help="another than the release build")
    parser.add_argument("--step", action="append", metavar="NAME", help="only this one; repeatable")
    parser.add_argument("--pictures", metavar="FOLDER", type=Path,
                        default=PROJECT / "build" / "desktops", help="where the results go")
    parser.add_argument("--run", nargs=argparse.REMAINDER, metavar="COMMAND",
                        help="no tour: run this command in the session; it sees OUTER, the display "
                             "around it, whose picture is taken in the end")
    if len(sys.argv) == 1:
        parser.print_help()
        sys.exit(2)
    wanted = parser.parse_args()
    if wanted.mode and wanted.mode not in DESKTOPS[wanted.desktop].MODES:
        parser.error(f"{wanted.desktop} has no mode {wanted.mode}\n{modes}")
    unknown = set(wanted.step or ()) - set(STEPS)
    if unknown:
        parser.error(f"no such step: {', '.join(sorted(unknown))}")
    return wanted


def take_tour(session, wanted, name):
    program = str(Path(wanted.program).resolve())
    folder = wanted.pictures / name
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("*.png"):
        old.unlink()
    tour = Tour(session, program, folder)
    rows = []
    print(f"## {name}\n\n| | step | |\n|---|---|---|", flush=True)
    try:
        for row in tour.walk(wanted.step):
            rows.append(row)
            print(line(row), flush=True)
    finally:
        if tour.pictures:
            write_sheet(tour.pictures, name, wanted.pictures / f"{name}.png")
        (wanted.pictures / f"{name}.md").write_text(
            f"## {name}\n\n| | step | |\n|---|---|---|\n" + "".join(line(r) + "\n" for r in rows))
        (folder / "logs").write_text(session.report(200))
    print(f"\n{wanted.pictures / name}.png\n", flush=True)
    return all(row.verdict != SHORT for row in rows)


def line(row):
    return f"| {MARKS[row.verdict]} | {row.step} | {row.detail} |"


def run_command(session, wanted, name):
    process = session.spawn(wanted.run, "command", {"OUTER": session.outer}, stdout=None,
                            stderr=None, cwd=None)
    status = process.wait()
    wanted.pictures.mkdir(parents=True, exist_ok=True)
    session.picture().write_png(wanted.pictures / f"{name}.png")
    return status == 0


def main():
    wanted = options()
    for number in ENDING:
        signal.signal(number, interrupt)
    kind = DESKTOPS[wanted.desktop]
    action = run_command if wanted.run else take_tour
    holds = True
    try:
        subprocess.run([PROJECT / "scripts/bootstrap", "desktop", "test", kind.NAME], check=True)
        wanted.program = wanted.program or release_build()
        for mode in [wanted.mode] if wanted.mode else kind.MODES:
            with kind(mode) as session:
                holds &= action(session, wanted, f"{kind.NAME}-{mode}")
    except Interrupted as interruption:
        return 128 + interruption.args[0]
    except (OSError, RuntimeError, subprocess.CalledProcessError) as error:
        print(f"try-desktop: {error}", file=sys.stderr)
        return 1
    return 0 if holds else 1


if __name__ == "__main__":
    sys.exit(main())
