"""Lists the undefined symbols of a Mac's program, each with the library it is expected from:
open_symbols.py PROGRAM LIST. Fails when that library is not known to have it."""
import re
import subprocess
import sys
from collections import Counter
from glob import glob
from pathlib import Path

HERE = Path(__file__).parent
sys.dont_write_bytecode = True
from stub_library import exported

program, listing = sys.argv[1:]
found = subprocess.run(["llvm-nm", "-u", "-m", program], check=True, capture_output=True,
                       text=True).stdout
entries = []
for line in found.splitlines():
    match = re.search(r" (\S+)(?: \(from (\S+)\))?$", line.strip())
    entries.append((match[1], match[2] or "anywhere"))

frameworks = {folder.stem for folder in HERE.glob("Frameworks/*.framework")}
ours = frameworks | {"Sparkle", "libSystem", "libobjc", "libc++"}
counts = Counter(library for _, library in entries)
faults = []
for library in sorted(counts.keys() - ours):
    names = {name for name, origin in entries if origin == library}
    if library.startswith("Qt"):
        [debian] = glob(f"/usr/lib/*/libQt6{library[2:]}.so")
        names -= {"_" + name for name in exported(debian)}
    faults += [f"{name} is expected from {library}" for name in sorted(names)]

Path(listing).write_text("".join(f"{name} {library}\n" for name, library in entries))
print(f"{len(entries)} undefined symbols:",
      ", ".join(f"{library} {count}" for library, count in counts.most_common()))
sys.exit("\n".join(faults) or 0)
