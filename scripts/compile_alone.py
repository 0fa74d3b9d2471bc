"""Compiles each file of a unity build alone, without writing anything: as part of a larger file it
may lack an include, which the next build file by file would miss. Argument: the build's folder."""
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

build = Path(sys.argv[1]).resolve()


def compilations():
    for entry in json.loads((build / "compile_commands.json").read_text()):
        unit = Path(entry["file"])
        if unit.parent.name != "Unity":
            continue
        command = shlex.split(entry["command"])
        command = [*command[:command.index("-o")], "-fsyntax-only"]
        for source in re.findall(r'^#include "(.*\.cpp)"', unit.read_text(), re.MULTILINE):
            if build not in Path(source).parents:
                yield [*command, source], entry["directory"]


def fails(compilation):
    command, folder = compilation
    return subprocess.run(command, cwd=folder).returncode != 0


with ThreadPoolExecutor(os.cpu_count()) as pool:
    sys.exit(any(list(pool.map(fails, compilations()))))
