"""Writes a stub of a library of Debian's Qt, as a Mac's linker reads it:
stub_library.py LIBRARY.so STUB.tbd. It lists all that the library exports, and nothing else."""
import re
import subprocess
import sys
from pathlib import Path

# What takes types of the standard library is spelled otherwise with a Mac's one. Each stands here
# when the program calls it, and is listed only when Debian's library exports the same.
RESPELLED = [
    "_ZN11QThreadPool5startENSt3__18functionIFvvEEEi",
    "_ZN7QThread16createThreadImplEONSt3__16futureIvEE",
    "_ZN9QMetaType25registerConverterFunctionERKNSt3__18functionIFbPKvPvEEES_S_",
    "_ZN9QMetaType27registerMutableViewFunctionERKNSt3__18functionIFbPvS2_EEES_S_",
]


def demangled(names):
    text = subprocess.run(["c++filt"], input="\n".join(names), check=True, capture_output=True,
                          text=True).stdout
    return text.replace("std::__1::", "std::").splitlines()


def exported(library):
    listed = subprocess.run(["nm", "-D", "--defined-only", "--without-symbol-versions", library],
                            check=True, capture_output=True, text=True).stdout
    names = {line.split()[-1] for line in listed.splitlines()}
    readable = set(demangled(names))
    names.update(name for name, text in zip(RESPELLED, demangled(RESPELLED)) if text in readable)
    return sorted(names)


def main():
    library, stub = sys.argv[1:]
    module = re.match(r"libQt6(\w+)\.so", Path(library).name)[1]
    Path(stub).write_text(f"""--- !tapi-tbd
tbd-version: 4
targets: [ arm64-macos ]
install-name: '@rpath/Qt{module}.framework/Versions/A/Qt{module}'
exports:
  - targets: [ arm64-macos ]
    symbols: [ {", ".join("_" + name for name in exported(library))} ]
...
""")


if __name__ == "__main__":
    main()
