"""Writes a stub of a library of Debian's Qt for a Mac's linker, with exactly what it exports:
stub_library.py LIBRARY.so STUB.tbd"""
import re
import subprocess
import sys
from pathlib import Path

# Functions that take types of the standard library: their mangled names differ with a Mac's one.
# Those that the program calls; one is listed only when Debian's library exports its counterpart.
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
