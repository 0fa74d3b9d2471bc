"""scripts/package-macos over stub tools that note how they were called."""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# What the script takes of any Unix; the Mac's own tools are stubs.
BASICS = ["bash", "basename", "dirname", "find", "grep", "ln", "mkdir", "rm", "sed", "wc"]
TOOLS = ["cmake", "codesign", "ditto", "hdiutil", "macdeployqt", "ninja", "plutil", "python3",
         "security", "sign_update", "sleep", "spctl", "uname", "xcrun"]
STUB = f"#!{sys.executable} -SE\n" + r'''
import json, os, plistlib, shutil, sys
from pathlib import Path

name, arguments = Path(sys.argv[0]).name, sys.argv[1:]
with open(os.environ["CALLS"], "a") as calls:
    print(json.dumps([name, *arguments]), file=calls)
if os.environ.get("FAILING") in (name, " ".join([name, *arguments[:2]])):
    sys.exit(1)

if name == "uname":
    print(os.environ.get("SYSTEM", "Darwin"))
elif name == "security":
    print('  1) 0123456789ABCDEF "Developer ID Application: A B (T)"')
elif name == "cmake" and arguments[0] == "--build":
    helpers = Path(arguments[1], "Meterkin.app/Contents/Frameworks/Sparkle.framework/Versions/B")
    shutil.rmtree(helpers.parent, ignore_errors=True)
    for folder in ("XPCServices/Installer.xpc", "XPCServices/Downloader.xpc", "Updater.app"):
        (helpers / folder).mkdir(parents=True)
    (helpers.parent / "Current").symlink_to("B")
elif name == "macdeployqt":
    contents = Path(arguments[0], "Contents")
    (contents / "Frameworks/QtCore.framework").mkdir()
    for folder in ("platforms", "quick"):
        (contents / "PlugIns" / folder).mkdir(parents=True)
        (contents / "PlugIns" / folder / "a b.dylib").touch()
elif name == "ditto":
    shutil.copytree(*arguments[-2:], symlinks=True)
elif name == "hdiutil":
    if Path(arguments[-1]).exists():
        sys.exit("File exists")
    Path(arguments[-1]).write_text("image")
    if "BUSY" in os.environ and '["sleep", "5"]' not in Path(os.environ["CALLS"]).read_text():
        sys.exit("Resource busy")
elif [name, *arguments[:2]] == ["xcrun", "notarytool", "submit"]:
    sys.stdout.buffer.write(plistlib.dumps({"status": os.environ["NOTARISED"], "id": "7"}))
elif name == "plutil":
    print(plistlib.loads(sys.stdin.buffer.read())[arguments[1]])
elif name == "sign_update":
    print('sparkle:edSignature="S" length="5"')
'''
IDENTITY = "Developer ID Application: A B (T)"
INPUTS = {
    "METERKIN_VERSION": "1.2.3",
    "METERKIN_FEED_URL": "https://example.org/feed?a=1&b=2",
    "METERKIN_UPDATE_PUBLIC_KEY": "K" * 43 + "=",
    "METERKIN_SIGNING_IDENTITY": IDENTITY,
    "METERKIN_NOTARY_PROFILE": "a profile",
}

FEED_ITEM = '''
  <sparkle:version>1.2.3</sparkle:version>
  <sparkle:shortVersionString>1.2.3</sparkle:shortVersionString>
  <sparkle:minimumSystemVersion>13.0</sparkle:minimumSystemVersion>
and on the enclosure of that item:
  sparkle:edSignature="S" length="5"
'''


class PackageTest(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="a folder "))
        self.addCleanup(shutil.rmtree, self.folder)
        self.tree = self.folder / "the tree"
        (self.tree / "scripts").mkdir(parents=True)
        shutil.copy(ROOT / "scripts/package-macos", self.tree / "scripts")
        self.tools = self.folder / "tools"
        self.tools.mkdir()
        (self.tools / "stub").write_text(STUB)
        (self.tools / "stub").chmod(0o755)
        for name in BASICS:
            (self.tools / name).symlink_to(shutil.which(name))
        for name in TOOLS:
            (self.tools / name).symlink_to("stub")
        (self.folder / "Sparkle.framework/Versions/B").mkdir(parents=True)
        (self.folder / "Sparkle.framework/Versions/Current").symlink_to("B")

    def package(self, *arguments, **changes):
        """The status, what was said on stderr, and the calls; a change to None unsets."""
        calls = self.folder / "calls"
        calls.write_text("")
        environment = {"PATH": str(self.tools), "CALLS": str(calls), "NOTARISED": "Accepted",
                       "METERKIN_SPARKLE": ".", **INPUTS, **changes}
        self.done = subprocess.run(
            [shutil.which("bash"), self.tree / "scripts/package-macos", *arguments],
            cwd=self.folder, capture_output=True, text=True, timeout=60,
            env={key: value for key, value in environment.items() if value is not None})
        noted = [json.loads(line) for line in calls.read_text().splitlines()]
        return self.done.returncode, self.done.stderr, noted

    def signed(self, calls):
        """What was signed in the bundle, in that order, and the options of each."""
        bundle = self.tree / "build/package-macos/image/Meterkin.app/Contents"
        return {os.path.relpath(call[-1], bundle): call[2:-1]
                for call in calls if call[:2] == ["codesign", "--force"]}

    def test_whole(self):
        build = self.tree / "build/package-macos"
        image = str(build / "Meterkin-1.2.3.dmg")
        status, said, calls = self.package(METERKIN_SIGN_UPDATE="tools/sign_update")
        self.assertEqual((status, said), (0, ""))
        self.assertTrue(self.done.stdout.endswith(FEED_ITEM), self.done.stdout)

        configure = next(call for call in calls if call[0] == "cmake")
        for wanted in (f"-DMETERKIN_SPARKLE={self.folder}", "-DMETERKIN_VERSION=1.2.3",
                       "-DCMAKE_OSX_ARCHITECTURES=arm64", "-DCMAKE_BUILD_TYPE=Release",
                       "-DMETERKIN_FEED_URL=" + INPUTS["METERKIN_FEED_URL"],
                       "-DMETERKIN_UPDATE_PUBLIC_KEY=" + INPUTS["METERKIN_UPDATE_PUBLIC_KEY"]):
            self.assertIn(wanted, configure)

        signed = self.signed(calls)
        sparkle = "Frameworks/Sparkle.framework"
        self.assertEqual(sorted(signed), sorted([
            "..", "Frameworks/QtCore.framework", sparkle,
            "PlugIns/platforms/a b.dylib", "PlugIns/quick/a b.dylib",
            *(f"{sparkle}/Versions/Current/{helper}" for helper in (
                "Autoupdate", "Updater.app", "XPCServices/Downloader.xpc",
                "XPCServices/Installer.xpc"))]))
        order = list(signed)
        self.assertEqual(order[-1], "..")
        self.assertGreater(order.index(sparkle), order.index(f"{sparkle}/Versions/Current/Updater.app"))
        hardened = ["--sign", IDENTITY, "--options", "runtime", "--timestamp"]
        for path, options in signed.items():
            self.assertEqual(options[:5], hardened, path)
            self.assertEqual("--preserve-metadata=entitlements" in options, path.endswith(".xpc"))
        self.assertNotIn("--deep", [word for call in calls for word in call if call[1] != "--verify"])

        # Read on from where the bundle is signed.
        steps = [call for call in calls if call[:2] != ["codesign", "--force"]]
        first = next(index for index, call in enumerate(steps) if call[:2] == ["cmake", "--build"])
        self.assertEqual([" ".join(call[:-1]) for call in steps[first + 1:first + 4]], [
            f"ditto --noqtn {build}/Meterkin.app", f"macdeployqt {build}/deployed/Meterkin.app",
            f"ditto --noqtn --arch arm64 {build}/deployed/Meterkin.app"])
        self.assertEqual([" ".join(call[:3]) for call in steps[first + 4:]], [
            "codesign --verify --strict", "python3 -B Tests/PlatformMacOS/check_bundle.py",
            "hdiutil create -volname", f"codesign --sign {IDENTITY}", "codesign --verify --strict",
            "xcrun notarytool submit", "plutil -extract status", "xcrun stapler staple",
            "xcrun stapler validate", "spctl --assess --type", "spctl --assess --type",
            f"sign_update {image}"])
        self.assertTrue((build / "image/Applications").is_symlink())

    def test_for_this_machine_only(self):
        without = dict.fromkeys(INPUTS) | {"METERKIN_VERSION": "1.2.3"}
        for arguments, changes in [(["--unsigned"], {}), ([], {"METERKIN_UNSIGNED": "1"})]:
            for name in ("security", "spctl", "xcrun"):
                (self.tools / name).unlink(missing_ok=True)
            status, said, calls = self.package(*arguments, **without | changes)
            self.assertEqual((status, said), (0, ""))
            for path, options in self.signed(calls).items():
                self.assertEqual(options[:2], ["--sign", "-"], path)
                self.assertNotIn("runtime", options)
            self.assertEqual(calls[-1][:2], ["hdiutil", "create"])

    def test_refusals_before_anything_is_built(self):
        cases = [({name: None}, [f"{name} is not set"]) for name in INPUTS]
        cases += [
            ({"METERKIN_SPARKLE": None, "METERKIN_VERSION": ""},
             ["METERKIN_SPARKLE is not set", "METERKIN_VERSION is not set"]),
            ({"METERKIN_SPARKLE": "the tree"}, ["no Sparkle.framework"]),
            ({"METERKIN_VERSION": "1.2-rc"}, ["METERKIN_VERSION is 1.2-rc"]),
            ({"METERKIN_FEED_URL": "http://example.org/feed"}, ["https://"]),
            ({"METERKIN_UPDATE_PUBLIC_KEY": "short"}, ["METERKIN_UPDATE_PUBLIC_KEY is not a key"]),
            ({"METERKIN_SIGNING_IDENTITY": "Somebody else"}, ["not in your keychain"]),
            ({"METERKIN_QT": "nowhere"}, ["no nowhere/bin/macdeployqt here"]),
            ({"METERKIN_SIGN_UPDATE": "nowhere"}, ["METERKIN_SIGN_UPDATE is nowhere"]),
            ({"SYSTEM": "Linux"}, ["this is not a Mac"]),
            ({"FAILING": "xcrun --find notarytool"}, ["no notarytool here"]),
            ({"METERKIN_UNSIGNED": "1", "METERKIN_UPDATE_PUBLIC_KEY": None},
             ["METERKIN_UPDATE_PUBLIC_KEY is not set"]),
        ]
        for changes, wanted in cases:
            with self.subTest(changes=changes):
                self.refused(wanted, **changes)
        for name in ("cmake", "codesign", "ditto", "hdiutil", "macdeployqt", "spctl", "xcrun"):
            with self.subTest(missing=name):
                (self.tools / name).unlink()
                self.refused([f"no {name} here"])
                (self.tools / name).symlink_to("stub")

    def refused(self, wanted, **changes):
        status, said, calls = self.package(**changes)
        self.assertEqual(status, 1)
        for text in wanted:
            self.assertIn(text, said)
        self.assertEqual([call for call in calls if call[0] in ("cmake", "hdiutil")], [])

    def test_a_failing_tool_ends_it_but_a_busy_image(self):
        for failing in ("cmake", "ditto", "macdeployqt", "codesign", "python3", "hdiutil",
                        "xcrun notarytool submit", "xcrun stapler validate", "spctl"):
            with self.subTest(failing=failing):
                status, said, calls = self.package(FAILING=failing)
                self.assertEqual(status, 1)
                self.assertIn(f"failed: {failing}", said)
                self.assertTrue(" ".join(calls[-1]).startswith(failing), calls[-1])
        status, said, calls = self.package("--unsigned", BUSY="")
        self.assertEqual((status, said), (0, "Resource busy\n"))
        status, said, calls = self.package(NOTARISED="Invalid")
        self.assertEqual((status, calls[-1][:4]), (1, ["xcrun", "notarytool", "log", "7"]))
        self.assertIn('"Invalid"', said)


if __name__ == "__main__":
    unittest.main()
