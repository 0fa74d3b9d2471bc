#!/usr/bin/env python3
"""Says what is wrong with a bundle of the program; nothing and 0 when it is sound:
  check_bundle.py BUNDLE [--version V] [--feed-url URL --public-key KEY] [--deployed]"""

from __future__ import annotations

import argparse
import plistlib
import re
import struct
import sys
from pathlib import Path

import mach_o

ROOT = Path(__file__).resolve().parents[2]
RPATH = "@executable_path/../Frameworks"
SPARKLE = "@rpath/Sparkle.framework/Versions/B/Sparkle"
OLDEST_SYSTEM = "13.0"
SYSTEM_FOLDERS = ("/usr/lib/", "/System/Library/")
OWN_FOLDERS = ("@rpath/", RPATH + "/")
PLATFORM_PLUGIN = "PlugIns/platforms/libqcocoa.dylib"  # which no library names


def program_identifier() -> str:
    """As the program calls its notifications: the system knows them by the bundle's identifier."""
    source = (ROOT / "Meterkin/Services/AlertManager.cpp").read_text(encoding="utf-8")
    return re.search(r'identifierPrefix = QStringLiteral\("(.+)\.alert\."\)', source)[1]


def information_problems(information: dict, options: argparse.Namespace) -> list[str]:
    wanted = {
        "CFBundleIdentifier": program_identifier(),
        "CFBundleName": "Meterkin",
        "CFBundleExecutable": "Meterkin",
        "CFBundleIconFile": "Meterkin",
        "CFBundlePackageType": "APPL",
        "NSPrincipalClass": "NSApplication",
        "LSMinimumSystemVersion": OLDEST_SYSTEM,
        "LSUIElement": True,
        "NSHighResolutionCapable": True,
        "NSSupportsAutomaticTermination": False,
        "SUFeedURL": options.feed_url,
        "SUPublicEDKey": options.public_key,
    }
    problems = [f"{key} is {information.get(key)!r}, not {value!r}"
                for key, value in wanted.items() if information.get(key) != value]
    version = information.get("CFBundleVersion")
    if not re.fullmatch(r"\d+(\.\d+){0,2}", str(version)):
        problems.append(f"CFBundleVersion is {version!r}")
    if information.get("CFBundleShortVersionString") != version:
        problems.append("CFBundleShortVersionString and CFBundleVersion differ")
    if not information.get("NSDownloadsFolderUsageDescription"):
        problems.append("nothing to say when the system asks about the folder of downloads")
    if options.version not in (None, version):
        problems.append(f"CFBundleVersion is {version!r}, not {options.version!r}")
    return problems


def executable_problems(contents: Path) -> list[str]:
    path = contents / "MacOS/Meterkin"
    try:
        program = mach_o.read(path)
    except (OSError, mach_o.NotMachO) as error:
        return [f"no executable: {error}"]
    problems = []
    if program.file_type != mach_o.EXECUTABLE:
        problems.append(f"file type {program.file_type}: not an executable")
    if not path.stat().st_mode & 0o100:
        problems.append("the executable may not be executed")
    if program.minimum_system != OLDEST_SYSTEM:
        problems.append(f"minimum system {program.minimum_system}, not {OLDEST_SYSTEM}")
    if program.rpaths != [RPATH]:
        problems.append(f"rpaths {program.rpaths}, not {[RPATH]}")
    if SPARKLE not in program.libraries:
        problems.append(f"not linked with {SPARKLE}")
    problems += [f"linked with {library}, which is neither the system's nor in the bundle"
                 for library in program.libraries
                 if not library.startswith(SYSTEM_FOLDERS + OWN_FOLDERS)]
    problems += [f"a path of the build machine: {one}"
                 for one in program.absolute_paths if not one.startswith(SYSTEM_FOLDERS)]
    return problems


def deployment_problems(contents: Path) -> list[str]:
    """All but the update framework, whose maker has seen to its own."""
    contents = contents.resolve()
    frameworks = contents / "Frameworks"
    problems = []
    if not (contents / PLATFORM_PLUGIN).is_file():
        problems.append(f"no {PLATFORM_PLUGIN} in the bundle")
    for path in sorted(contents.rglob("*")):
        if path.is_symlink() or not path.is_file() or not mach_o.is_mach_o(path) \
                or frameworks / "Sparkle.framework" in path.parents:
            continue
        try:
            libraries = mach_o.read(path).libraries
        except mach_o.NotMachO as error:
            problems.append(str(error))
            continue
        folders = {"@rpath": frameworks, "@executable_path": contents / "MacOS",
                   "@loader_path": path.parent}
        for library in libraries:
            start, _, rest = library.partition("/")
            place = (folders.get(start, Path("/")) / rest).resolve()
            if not library.startswith(SYSTEM_FOLDERS) \
                    and not (contents in place.parents and place.is_file()):
                problems.append(f"{path.relative_to(contents)}: {library} is not in the bundle")
    return problems


def icon_problems(path: Path) -> list[str]:
    try:
        data = path.read_bytes()
        kinds, at = set(), 8
        magic, length = struct.unpack_from(">4sI", data)
        while at < len(data):
            kind, size = struct.unpack_from(">4sI", data, at)
            if size < 8 or at + size > len(data):
                return ["an element of the icon is cut off"]
            kinds.add(kind.decode("ascii", "replace"))
            at += size
    except (OSError, struct.error) as error:
        return [f"no icon: {error}"]
    if magic != b"icns" or length != len(data):
        return ["the icon is no whole icns file"]
    missing = {"is32", "il32", "ic07", "ic08", "ic09", "ic10", "ic11", "ic12", "ic13", "ic14"} - kinds
    return [f"the icon has no {kind}" for kind in sorted(missing)]


def framework_problems(frameworks: Path) -> list[str]:
    problems = []
    found = sorted(frameworks.glob("*.framework"))
    if frameworks / "Sparkle.framework" not in found:
        problems.append("no Sparkle.framework in the bundle")
    for framework in found:
        entries = [one for one in framework.iterdir() if one.name != "Versions"]
        for link in [framework / "Versions/Current", *entries]:
            if not link.is_symlink():
                problems.append(f"{link.relative_to(frameworks)} is not a link")
            elif not link.exists():
                problems.append(f"{link.relative_to(frameworks)} leads nowhere")
    return problems


def main(arguments: list[str]) -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bundle", type=Path)
    parser.add_argument("--version")
    parser.add_argument("--feed-url", help="without it the bundle must name none")
    parser.add_argument("--public-key", help="likewise")
    parser.add_argument("--deployed", action="store_true", help="Qt must be in it, whole")
    options = parser.parse_args(arguments)
    contents = options.bundle / "Contents"

    try:
        information = plistlib.loads((contents / "Info.plist").read_bytes())
        problems = information_problems(information, options)
    except Exception as error:  # a damaged list raises whatever its parser does
        problems = [f"no Info.plist: {error}"]
    problems += executable_problems(contents)
    if options.deployed:
        problems += deployment_problems(contents)
    problems += icon_problems(contents / "Resources/Meterkin.icns")
    problems += framework_problems(contents / "Frameworks")
    for problem in problems:
        print(f"check_bundle: {problem}", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
