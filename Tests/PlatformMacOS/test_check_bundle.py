"""Which bundles check_bundle.py refuses."""

import contextlib
import io
import plistlib
import shutil
import struct
import tempfile
import unittest
from pathlib import Path

import check_bundle

PACKAGING = check_bundle.ROOT / "packaging/macOS"
QT = "@rpath/QtCore.framework/Versions/A/QtCore"
FEED, KEY = "https://example.org/feed?a=1&b=2", "K" * 43 + "="


def mach_o(libraries=(check_bundle.SPARKLE, QT, "/usr/lib/libSystem.B.dylib"),
           rpaths=(check_bundle.RPATH,), oldest=(13, 0), cpu=0x0100000C, file_type=2) -> bytes:
    def with_text(command, fixed, text):
        text = text.encode() + b"\0"
        text += bytes(-(fixed + len(text)) % 8)
        return struct.pack("<3I", command, fixed + len(text), fixed) + bytes(fixed - 12) + text

    commands = [struct.pack("<6I", 0x32, 24, 1, oldest[0] << 16 | oldest[1] << 8, 0, 0)]
    commands += [with_text(0xC, 24, library) for library in libraries]
    commands += [with_text(0x8000001C, 12, rpath) for rpath in rpaths]
    body = b"".join(commands)
    return struct.pack("<8I", 0xFEEDFACF, cpu, 0, file_type, len(commands), len(body), 0, 0) + body


INTEL = 0x01000007


def universal(arm64: bytes) -> bytes:
    """As Qt's libraries come; nobody needs what the other half needs."""
    slices = [(INTEL, mach_o(["/opt/intel/libz.dylib"], cpu=INTEL)), (0x0100000C, arm64)]
    start = 8 + 20 * len(slices)
    head, body = struct.pack(">2I", 0xCAFEBABE, len(slices)), b""
    for cpu, data in slices:
        head += struct.pack(">5I", cpu, 0, start + len(body), len(data), 0)
        body += data
    return head + body


def information(**changes) -> bytes:
    text = (PACKAGING / "Info.plist.in").read_text(encoding="utf-8")
    values = plistlib.loads(
        text.replace("@METERKIN_VERSION@", "1.2.3").replace("@METERKIN_UPDATE_KEYS@", "").encode())
    values.update(changes)
    return plistlib.dumps({key: value for key, value in values.items() if value is not None})


def written(path, data):
    def change(contents: Path):
        (contents / path).write_bytes(data)
    return change


def no_link(path):
    def change(contents: Path):
        (contents / "Frameworks/Sparkle.framework" / path).unlink()
        (contents / "Frameworks/Sparkle.framework" / path).mkdir()
    return change


def plist(**changes):
    return written("Info.plist", information(**changes))


def program(**changes):
    return written("MacOS/Meterkin", mach_o(**changes))


def deployed(*plugin_needs, plugin=check_bundle.PLATFORM_PLUGIN):
    def change(contents: Path):
        frameworks = contents / "Frameworks"
        qt = frameworks / "QtCore.framework"
        for path, needs in [(qt / "Versions/A/QtCore", ["/usr/lib/libz.dylib"]),
                            (frameworks / "Sparkle.framework/Versions/B/Sparkle", ["/opt/own"]),
                            (contents / plugin, plugin_needs)]:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(universal(mach_o(needs, file_type=6)))
        (qt / "Versions/Current").symlink_to("A")
        (qt / "QtCore").symlink_to("Versions/Current/QtCore")
    return change


ICON = (PACKAGING / "Meterkin.icns").read_bytes()
WITH_FEED = ["--feed-url", FEED, "--public-key", KEY]
# what is changed, how it is called, what has to be in the answer (empty: nothing is wrong)
CASES = [
    (None, [], ""),
    (None, ["--version", "1.2.3"], ""),
    (None, ["--version", "1.2.4"], "not '1.2.4'"),
    (None, ["--deployed"], "QtCore.framework/Versions/A/QtCore is not in the bundle"),
    (deployed(QT, "@executable_path/../Frameworks/QtCore.framework/QtCore",
              "@loader_path/../../Frameworks/QtCore.framework/QtCore"), ["--deployed"], ""),
    (deployed("@rpath/QtDBus.framework/Versions/A/QtDBus"), ["--deployed"],
     "libqcocoa.dylib: @rpath/QtDBus.framework/Versions/A/QtDBus is not in the bundle"),
    (deployed("/bin/sh"), ["--deployed"], "libqcocoa.dylib: /bin/sh is not in the bundle"),
    (deployed("@loader_path/QtCore"), ["--deployed"], "@loader_path/QtCore is not in the bundle"),
    (deployed(plugin="PlugIns/libqcocoa.dylib"), ["--deployed"], "no PlugIns/platforms/libqcocoa"),
    (written("Resources/z.dylib", mach_o(cpu=INTEL)), ["--deployed"], "z.dylib: not a Mach-O"),
    (plist(SUFeedURL=FEED, SUPublicEDKey=KEY), WITH_FEED, ""),
    (plist(SUFeedURL=FEED, SUPublicEDKey=KEY), [], "SUFeedURL is 'https"),
    (plist(SUFeedURL=""), [], "SUFeedURL is ''"),
    (None, WITH_FEED, "SUPublicEDKey is None"),
    (plist(CFBundleIdentifier="org.meterkin.meterkin"), [], "CFBundleIdentifier is"),
    (plist(LSUIElement=None), [], "LSUIElement is None"),
    (plist(NSDownloadsFolderUsageDescription=None), [], "nothing to say"),
    (plist(NSSupportsAutomaticTermination=True), [], "NSSupportsAutomaticTermination is True"),
    (plist(LSMinimumSystemVersion="14.0"), [], "LSMinimumSystemVersion is '14.0'"),
    (plist(CFBundleVersion="1.2.3-rc"), [], "CFBundleVersion is '1.2.3-rc'"),
    (plist(CFBundleVersion="1.2.4"), [], "differ"),
    (written("Info.plist", b"<plist>"), [], "no Info.plist"),
    (program(cpu=INTEL), [], "not a Mach-O file for arm64"),
    (written("MacOS/Meterkin", mach_o()[:60]), [], "no executable"),
    (written("MacOS/Meterkin", b""), [], "no executable"),
    (program(file_type=6), [], "not an executable"),
    (lambda contents: (contents / "MacOS/Meterkin").chmod(0o644), [], "may not be executed"),
    (program(oldest=(14, 1)), [], "minimum system 14.1"),
    (program(rpaths=[]), [], "rpaths []"),
    (program(rpaths=[check_bundle.RPATH, "/opt/Qt/lib"]), [], "path of the build machine: /opt/Qt"),
    (program(libraries=[QT]), [], "not linked with @rpath/Sparkle"),
    (program(libraries=[check_bundle.SPARKLE, "/opt/q/QtCore"]), [], "linked with /opt/q/QtCore"),
    (program(libraries=[check_bundle.SPARKLE, "libz.dylib"]), [], "linked with libz.dylib"),
    (written("Resources/Meterkin.icns", b""), [], "no icon"),
    (written("Resources/Meterkin.icns", ICON[:-1]), [], "cut off"),
    (written("Resources/Meterkin.icns", ICON.replace(b"ic10", b"ic99")), [], "has no ic10"),
    (lambda contents: shutil.rmtree(contents / "Frameworks/Sparkle.framework"), [], "no Sparkle"),
    (no_link("Versions/Current"), [], "Versions/Current is not a link"),
    (no_link("Sparkle"), [], "Sparkle.framework/Sparkle is not a link"),
    (lambda contents: shutil.rmtree(contents / "Frameworks/Sparkle.framework/Versions/B"), [],
     "Versions/Current leads nowhere"),
]


def sound_bundle(parent: Path) -> Path:
    contents = parent / "Meterkin.app/Contents"
    framework = contents / "Frameworks/Sparkle.framework"
    for folder in (contents / "MacOS", contents / "Resources", framework / "Versions/B"):
        folder.mkdir(parents=True)
    (contents / "Info.plist").write_bytes(information())
    (contents / "Resources/Meterkin.icns").write_bytes(ICON)
    (contents / "MacOS/Meterkin").write_bytes(mach_o())
    (contents / "MacOS/Meterkin").chmod(0o755)
    (framework / "Versions/B/Sparkle").touch()
    (framework / "Versions/Current").symlink_to("B")
    (framework / "Sparkle").symlink_to("Versions/Current/Sparkle")
    return contents


class CheckBundleTest(unittest.TestCase):
    def test_bundles(self):
        for number, (change, arguments, wanted) in enumerate(CASES):
            with self.subTest(number=number, wanted=wanted), \
                    tempfile.TemporaryDirectory() as folder:
                contents = sound_bundle(Path(folder))
                if change:
                    change(contents)
                said = io.StringIO()
                with contextlib.redirect_stderr(said):
                    status = check_bundle.main([str(contents.parent), *arguments])
                self.assertEqual(status, 1 if wanted else 0, said.getvalue())
                self.assertIn(wanted, said.getvalue())
                if not wanted:
                    self.assertEqual(said.getvalue(), "")


if __name__ == "__main__":
    unittest.main()
