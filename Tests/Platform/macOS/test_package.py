"""scripts/package-macos over stub tools that note how they were called."""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
# of any Unix; the Mac's own tools are stubs
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
    for folder in ("XPCServices/Installer.xpc", "Updater.app"):
        (helpers / folder).mkdir(parents=True)
    (helpers.parent / "Current").symlink_to("B")
elif name == "macdeployqt":
    contents = Path(arguments[0], "Contents")
    (contents / "Frameworks/QtCore.framework").mkdir()
    (contents / "PlugIns").mkdir(parents=True)
    (contents / "PlugIns/a b.dylib").touch()
elif name == "ditto":
    shutil.copytree(*arguments[-2:], symlinks=True)
elif name == "hdiutil":
    Path(arguments[-1]).write_text("image")
elif [name, *arguments[:2]] == ["xcrun", "notarytool", "submit"]:
    sys.stdout.buffer.write(plistlib.dumps({"status": os.environ["NOTARISED"], "id": "7"}))
elif name == "plutil":
    print(plistlib.loads(sys.stdin.buffer.read())[arguments[1]])
'''
IDENTITY = "Developer ID Application: A B (T)"
INPUTS = {"METERKIN_VERSION": "1.2.3", "METERKIN_FEED_URL": "https://example.org/feed?a=1&b=2",
          "METERKIN_UPDATE_PUBLIC_KEY": "K" * 43 + "=", "METERKIN_SIGNING_IDENTITY": IDENTITY,
          "METERKIN_NOTARY_PROFILE": "a profile"}
SPARKLE = "Frameworks/Sparkle.framework"


class PackageTest(unittest.TestCase):
    def package(self, *arguments, **changes):
        """The status, what was said on stderr, and the calls; a change to None unsets."""
        folder = Path(tempfile.mkdtemp(prefix="a folder "))
        self.addCleanup(shutil.rmtree, folder)
        self.tree = folder / "the tree"
        (self.tree / "scripts").mkdir(parents=True)
        shutil.copy(ROOT / "scripts/package-macos", self.tree / "scripts")
        tools = folder / "tools"
        tools.mkdir()
        (tools / "stub").write_text(STUB)
        (tools / "stub").chmod(0o755)
        for name in BASICS:
            (tools / name).symlink_to(shutil.which(name))
        for name in set(TOOLS) - {changes.pop("missing", None)}:
            (tools / name).symlink_to("stub")
        (folder / "Sparkle.framework/Versions/B").mkdir(parents=True)
        (folder / "Sparkle.framework/Versions/Current").symlink_to("B")
        calls = folder / "calls"
        calls.touch()
        environment = {"PATH": str(tools), "CALLS": str(calls), "NOTARISED": "Accepted",
                       "METERKIN_SPARKLE": ".", **INPUTS, **changes}
        done = subprocess.run(
            [shutil.which("bash"), self.tree / "scripts/package-macos", *arguments],
            cwd=folder, capture_output=True, text=True, timeout=60,
            env={key: value for key, value in environment.items() if value is not None})
        noted = [json.loads(line) for line in calls.read_text().splitlines()]
        return done.returncode, done.stderr, noted

    def signed(self, calls):
        """What was signed in the bundle, in that order, and the options of each."""
        bundle = self.tree / "build/package-macos/image/Meterkin.app/Contents"
        return {os.path.relpath(call[-1], bundle): call[2:-1]
                for call in calls if call[:2] == ["codesign", "--force"]}

    def test_signs_from_the_inside_out_and_notarises(self):
        status, said, calls = self.package()
        self.assertEqual((status, said), (0, ""))
        signed = self.signed(calls)
        self.assertEqual(list(signed), [
            *(f"{SPARKLE}/Versions/Current/{helper}"
              for helper in ("XPCServices/Installer.xpc", "Autoupdate", "Updater.app")),
            "PlugIns/a b.dylib", "Frameworks/QtCore.framework", SPARKLE, ".."])
        for path, options in signed.items():
            self.assertEqual(options[:5],
                             ["--sign", IDENTITY, "--options", "runtime", "--timestamp"], path)
            self.assertEqual("--preserve-metadata=entitlements" in options, path.endswith(".xpc"))
        steps = [" ".join(call[:2]) for call in calls if call[:2] != ["codesign", "--force"]]
        self.assertEqual(steps[steps.index("cmake --build"):], [
            "cmake --build", "ditto --noqtn", f"macdeployqt {self.tree}/build/package-macos/deployed"
            "/Meterkin.app", "ditto --noqtn", "codesign --verify", "python3 -B", "hdiutil create",
            "codesign --sign", "codesign --verify", "xcrun notarytool", "plutil -extract",
            "xcrun stapler", "xcrun stapler", "spctl --assess", "spctl --assess"])

    def test_for_this_machine_only(self):
        without = dict.fromkeys(INPUTS) | {"METERKIN_VERSION": "1.2.3", "missing": "xcrun"}
        status, said, calls = self.package("--unsigned", **without)
        self.assertEqual((status, said), (0, ""))
        for path, options in self.signed(calls).items():
            self.assertEqual(options[:2], ["--sign", "-"], path)
            self.assertNotIn("runtime", options)
        self.assertEqual(calls[-1][:2], ["hdiutil", "create"])

    def test_refuses_before_anything_is_built(self):
        cases = [({name: None}, f"{name} is not set") for name in INPUTS] + [
            ({"METERKIN_SPARKLE": "the tree"}, "no Sparkle.framework"),
            ({"METERKIN_VERSION": "1.2-rc"}, "METERKIN_VERSION is 1.2-rc"),
            ({"METERKIN_FEED_URL": "http://example.org/feed"}, "https://"),
            ({"METERKIN_UPDATE_PUBLIC_KEY": "short"}, "METERKIN_UPDATE_PUBLIC_KEY is not a key"),
            ({"METERKIN_SIGNING_IDENTITY": "Somebody else"}, "not in your keychain"),
            ({"SYSTEM": "Linux"}, "this is not a Mac"),
            ({"FAILING": "xcrun --find notarytool"}, "no notarytool here"),
            ({"missing": "ditto"}, "no ditto here"),
        ]
        for changes, wanted in cases:
            with self.subTest(changes=changes):
                status, said, calls = self.package(**changes)
                self.assertEqual(status, 1)
                self.assertIn(wanted, said)
                self.assertEqual([call for call in calls if call[0] in ("cmake", "hdiutil")], [])

    def test_a_failing_tool_ends_it(self):
        for failing in ("cmake", "ditto", "codesign", "python3", "hdiutil", "spctl",
                        "xcrun notarytool submit", "xcrun stapler validate"):
            with self.subTest(failing=failing):
                status, said, calls = self.package(FAILING=failing)
                self.assertEqual(status, 1)
                self.assertIn(f"failed: {failing}", said)
                self.assertTrue(" ".join(calls[-1]).startswith(failing), calls[-1])
        status, said, calls = self.package(NOTARISED="Invalid")
        self.assertEqual((status, calls[-1][:4]), (1, ["xcrun", "notarytool", "log", "7"]))
