"""Puts one fault after the other into a copy of the tree; the checks have to find each of them."""
import os
import subprocess
import sys
import time
from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parents[2]
COPY = ROOT / "build/mutants"
STEPS = ["fakes", "layouts", "cross", "symbols", "bundle"]


class Mutant(NamedTuple):
    name: str
    file: str
    old: str    # stands there exactly once
    new: str


MUTANTS = [
    Mutant("identifier of the bundle", "packaging/macOS/Info.plist.in",
           "<string>org.meterkin.Meterkin</string>", "<string>org.meterkin.meterkin</string>"),
    Mutant("where the frameworks lie", "packaging/macOS/Bundle.cmake",
           "@executable_path/../Frameworks", "@executable_path/../Framework"),
    Mutant("a framework not linked", "Meterkin/Platform/macOS/CMakeLists.txt",
           '"-framework IOKit" ', ""),
]


def copy_tree():
    """Only what differs is written, so that what was built before still holds."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            cwd=ROOT, check=True, capture_output=True, text=True).stdout
    names = {name for name in listed.split("\0") if name and (ROOT / name).is_file()}
    for folder, folders, files in os.walk(COPY):
        if Path(folder) == COPY and "build" in folders:
            folders.remove("build")
        for file in files:
            path = Path(folder, file)
            if str(path.relative_to(COPY)) not in names:
                path.unlink()
    for name in names:
        source, target = ROOT / name, COPY / name
        content = source.read_bytes()
        if not target.is_file() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            target.chmod(source.stat().st_mode)


def fault():
    """The first step that fails in the copy, and what it said; nothing when all hold."""
    for step in STEPS:
        run = subprocess.run(["scripts/check-macos", step], cwd=COPY, capture_output=True, text=True)
        if run.returncode:
            return step, run.stdout + run.stderr
    return None


def try_mutant(mutant):
    path = COPY / mutant.file
    text = path.read_text()
    if text.count(mutant.old) != 1:
        sys.exit(f"{mutant.name}: {mutant.old!r} stands {text.count(mutant.old)} times"
                 f" in {mutant.file}")
    path.write_text(text.replace(mutant.old, mutant.new))
    try:
        return fault()
    finally:
        path.write_text(text)


def main():
    started = time.monotonic()
    copy_tree()
    print("Checking the copy without any fault ...", flush=True)
    found = fault()
    if found:
        sys.exit(f"{found[1]}\nmutants: {found[0]} fails without any fault put in")

    survivors = 0
    for mutant in MUTANTS:
        found = try_mutant(mutant)
        survivors += not found
        print(f"{found[0] if found else 'NOT FOUND':10} {mutant.name} ({mutant.file})", flush=True)
    print(f"{len(MUTANTS) - survivors} of {len(MUTANTS)} faults found in"
          f" {time.monotonic() - started:.0f} s")
    sys.exit(1 if survivors else 0)


main()
