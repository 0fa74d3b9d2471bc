"""Completes an AppDir (docs.appimage.org/reference/appdir.html) in which the program is installed
already, and packs it: for scripts/package, which see. Its arguments are the AppDir and the archive.

Everything is found by paths that the files themselves bear, so that the AppDir works wherever it
lies, without environment variables, which the programs that ours starts would inherit."""
import json
import os
import re
import shutil
import subprocess
import sys
import tarfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]

# What the desktop's own must be used of.
LEFT_OUT = re.compile(r"""
    ld-linux.* | libc | libm | libdl | libpthread | librt | libresolv   # all else is built on it
    # The graphics drivers of the system may need newer ones than ours.
    | libstdc\+\+ | libgcc_s
    | libEGL | libGL | libGLX | libGLdispatch | libOpenGL | libX11 | libX11-xcb | libxcb
    | libwayland-client
    # They read the system's settings and fonts, or are used by those that do.
    | libfontconfig | libfreetype | libharfbuzz | libpng16 | libz | libexpat | libuuid
    # Every desktop has them, and they bring much along.
    | libdbus-1 | libglib-2\.0
    """, re.VERBOSE)

# Windows are painted without OpenGL, and take no text from input methods.
PLUGINS = (
    "imageformats/libqsvg.so",
    "platforms/libqwayland-generic.so",
    "platforms/libqxcb.so",
    "tls/libqopensslbackend.so",
    "wayland-decoration-client/libbradient.so",
    # Qt looks for it all the same.
    "wayland-graphics-integration-client/libqt-plugin-wayland-egl.so",
    "wayland-shell-integration/libxdg-shell.so",
)

QT_CONF = """[Paths]
Prefix = ..
Plugins = lib/qt6/plugins
QmlImports = lib/qt6/qml
"""


def output(*command):
    return subprocess.run([str(word) for word in command], check=True, stdout=subprocess.PIPE,
                          text=True).stdout


def qt_folder(name):
    return Path(output("qtpaths6", "--query", f"QT_INSTALL_{name}").strip())


def is_left_out(library):
    return LEFT_OUT.fullmatch(library.partition(".so")[0]) is not None


class AppDir:
    def __init__(self, folder):
        self.folder = folder
        self.usr = folder / "usr"
        self.libraries = self.usr / "lib"
        self.sources = set()        # of what was copied

    def complete(self):
        for plugin in PLUGINS:
            self.copy(qt_folder("PLUGINS") / plugin, self.libraries / "qt6/plugins" / plugin)
        self.add_qml_modules()
        self.add_libraries()
        self.empty_icu_data()
        self.add_licences()
        (self.usr / "bin/qt.conf").write_text(QT_CONF)
        self.add_entry_points()

    def copy(self, source, target):
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source, target)
        target.chmod(0o755 if os.access(source, os.X_OK) else 0o644)
        self.sources.add(source.resolve())

    def add_qml_modules(self):
        """Those that our views import, and those that these import."""
        imports = qt_folder("QML")
        found = json.loads(output(qt_folder("LIBEXECS") / "qmlimportscanner", "-rootPath",
                                  PROJECT / "Meterkin", "-importPath", imports))
        for module in found:
            folder = Path(module.get("path", ""))
            if imports not in folder.parents:
                continue            # our own are in the program
            for file in (folder / "qmldir", *folder.glob("*.so")):
                self.copy(file, self.libraries / "qt6/qml" / file.relative_to(imports))

    def binaries(self):
        return [self.usr / "bin/meterkin", *sorted(self.usr.rglob("*.so*"))]

    def add_libraries(self):
        """What the binaries are linked to, and what those are in turn."""
        places = {}
        for binary in self.binaries():
            places |= dict(re.findall(r"^\t(\S+) => (\S+) \(", output("ldd", binary), re.MULTILINE))
        todo = self.binaries()
        while todo:
            binary = todo.pop()
            for name in output("patchelf", "--print-needed", binary).split():
                target = self.libraries / name
                if not is_left_out(name) and not target.exists():
                    self.copy(Path(places[name]), target)
                    todo.append(target)
        for binary in self.binaries():
            way = os.path.relpath(self.libraries, binary.parent)
            output("patchelf", "--set-rpath", "$ORIGIN" if way == "." else f"$ORIGIN/{way}", binary)

    def empty_icu_data(self):
        for data in self.libraries.glob("libicudata.so.*"):
            output("c++", "-std=c++20", "-O2", "-shared", "-fPIC", "-nostdlib",
                   f"-DICU_DATA=icudt{data.suffix[1:]}_dat", f"-Wl,-soname,{data.name}",
                   "-o", data, PROJECT / "packaging/IcuData.cpp")

    def add_licences(self):
        """As the packages that the copies come from state them."""
        for source in sorted(self.sources):
            # A package may name its files as they were before /lib became a link to /usr/lib.
            names = {str(source), str(source).removeprefix("/usr")}
            found = subprocess.run(["dpkg-query", "--search", *sorted(names)], text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
            package = found.partition(":")[0]
            target = self.usr / "share/doc" / package / "copyright"
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(Path("/usr/share/doc") / package / "copyright", target)

    def add_entry_points(self):
        entry, = self.usr.glob("share/applications/*.desktop")
        icons = self.usr / "share/icons/hicolor"
        icon, *_ = (*icons.glob(f"256x256/apps/{entry.stem}.png"),
                    *icons.glob(f"scalable/apps/{entry.stem}.svg"))
        for name, target in (("AppRun", self.usr / "bin/meterkin"), (entry.name, entry),
                             (icon.name, icon), (".DirIcon", icon)):
            (self.folder / name).symlink_to(target.relative_to(self.folder))

    def pack(self, archive):
        """The same content gives the same bits."""
        def without_origin(entry):
            entry.uid = entry.gid = 0
            entry.uname = entry.gname = ""
            entry.mtime = int(os.environ["SOURCE_DATE_EPOCH"])
            if not entry.issym():
                entry.mode = 0o755 if entry.isdir() or entry.mode & 0o100 else 0o644
            return entry
        with tarfile.open(archive, "w:xz") as packed:
            packed.add(self.folder, self.folder.name, filter=without_origin)


def main():
    folder, archive = map(Path, sys.argv[1:])
    appdir = AppDir(folder)
    appdir.complete()
    appdir.pack(archive)
    unpacked = sum(path.lstat().st_size for path in folder.rglob("*"))
    print(f"{archive}: {archive.stat().st_size / 1e6:.1f} MB, unpacked {unpacked / 1e6:.1f} MB")


if __name__ == "__main__":
    main()
