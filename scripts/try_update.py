"""An update on the real package manager, from the click in the settings to the new version running:
PackageKit, polkit and apt with our own package in a signed repository of this test's own, all of it
in a container that leaves the machine as it was. METERKIN_SMOKE=full also waits the five minutes
for the check in the background. With METERKIN_PICTURES=FOLDER it leaves pictures of the windows
there."""
import fcntl
import functools
import http.server
import os
import pwd
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
import unittest
import urllib.request
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "Tests" / "Smoke"))
from smoke_case import FULL  # noqa: E402
from window_case import WindowCase  # noqa: E402

PORT = 8123
BUILD = PROJECT / "build" / "update"
UNPACKED = BUILD / "unpacked"       # a program that was not installed as a package
USER = "meterkin-tester"
OLD, NEW = "0.1.0", "0.2.0"
REPOSITORY = Path("/srv/repository")
PROGRAM = Path("/usr/bin/meterkin")
TOOLS = ("unshare", "ip", "setpriv", "dbus-daemon", "apt-ftparchive", "gpg", "dpkg-deb", "Xvfb",
         "openbox", "dunst", "/usr/libexec/packagekitd", "/usr/lib/polkit-1/polkitd")
INSIDE = "METERKIN_CONTAINER"
KEY = Path("/usr/share/keyrings/shop.gpg")
RULES = Path("/etc/polkit-1/rules.d/00-meterkin.rules")
RULE = """polkit.addRule(function(action, subject) {
    if (action.id == "org.freedesktop.packagekit.system-sources-refresh")
        return polkit.Result.YES;
    if (action.id == "org.freedesktop.packagekit.system-update")
        return %s;
});
"""


def do(*command, **options):
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    assert done.returncode == 0, f"{' '.join(map(str, command))}:\n{done.stdout}"
    return done.stdout


# --- outside: the container ----------------------------------------------------------------------

def build_packages():
    for version in OLD, NEW:
        do(PROJECT / "scripts/package", "debian", version, BUILD)
    do("dpkg-deb", "--extract", package(OLD), UNPACKED)


def enter_container():
    """Runs this file again where all that it changes is in memory, with a network of its own."""
    folders = {PROJECT}
    pictures = os.environ.get("METERKIN_PICTURES")
    if pictures:
        folders.add(Path(pictures).resolve())
        Path(pictures).chmod(0o777)     # another user takes them
    # A route that leads nowhere else, or the package manager takes the machine for offline.
    script = """set -e
        ip link set lo up; ip route add default dev lo
        mount -t tmpfs tmpfs /mnt; mkdir /mnt/changes /mnt/work /mnt/machine
        mount -t overlay overlay -o lowerdir=/,upperdir=/mnt/changes,workdir=/mnt/work /mnt/machine
        for folder in dev sys; do mount --rbind /$folder /mnt/machine/$folder; done
        mount -t proc proc /mnt/machine/proc
        for folder in tmp run srv; do mount -t tmpfs tmpfs /mnt/machine/$folder; done
        for folder in {folders}; do
            mkdir -p /mnt/machine/$folder; mount --bind $folder /mnt/machine/$folder
        done
        exec chroot /mnt/machine "$@" """.format(folders=" ".join(map(str, folders)))
    return subprocess.call(
        ["unshare", "--mount", "--net", "--pid", "--fork", "--kill-child", "sh", "-c", script, "sh",
         "env", f"{INSIDE}=root", "/usr/bin/python3", "-B", str(Path(__file__).resolve()),
         *sys.argv[1:]], cwd="/")


# --- inside, as root: the machine to update ----------------------------------------------------

def package(version):
    found, = BUILD.glob(f"meterkin_{version}_*.deb")
    return found


def build_special(version, name="meterkin", fields="", before_installing=""):
    """A package with nothing in it, for what goes wrong before anything is unpacked."""
    tree = Path("/srv/tree/DEBIAN")
    shutil.rmtree(tree.parent, ignore_errors=True)
    tree.mkdir(parents=True)
    (tree / "control").write_text(
        f"Package: {name}\nVersion: {version}\nArchitecture: amd64\n"
        f"Maintainer: Nobody <nobody@example.org>\n{fields}Description: system vitals\n")
    (tree / "preinst").write_text(f"#!/bin/sh\n{before_installing}\n")
    (tree / "preinst").chmod(0o755)
    built = Path(f"/srv/{name}_{version}.deb")
    do("dpkg-deb", "--root-owner-group", "--build", tree.parent, built)
    return built


def publish(*packages, signs=True):
    """Puts the packages into the repository."""
    shutil.rmtree(REPOSITORY, ignore_errors=True)
    REPOSITORY.mkdir()
    for package in packages:
        shutil.copy(package, REPOSITORY)
    (REPOSITORY / "Packages").write_text(do("apt-ftparchive", "packages", ".", cwd=REPOSITORY))
    (REPOSITORY / "Release").write_text(do("apt-ftparchive", "release", ".", cwd=REPOSITORY))
    if signs:
        do("gpg", "--batch", "--yes", "--clearsign", "-o", REPOSITORY / "InRelease",
           REPOSITORY / "Release")


class Machine:
    """The machine to update, whose states the tests ask for by name."""

    def __init__(self):
        do("useradd", "--create-home", USER)
        do("gpg", "--batch", "--passphrase", "", "--quick-generate-key", "shop@example.org")
        do("gpg", "--batch", "--output", KEY, "--export", "shop@example.org")
        shutil.rmtree("/etc/apt/sources.list.d")
        self.lock = None
        self.old, self.new = package(OLD), package(NEW)
        Path("/run/dbus").mkdir()
        do("dbus-uuidgen", "--ensure=/etc/machine-id")
        do("dbus-daemon", "--system", "--fork")     # starts all the other services by itself

    def usual(self, option=f"signed-by={KEY}"):
        """The old version, the new one to be had, and a user who may install it."""
        if self.lock:
            self.lock.close()
        # also what a package manager that was killed has left half installed
        do("dpkg", "--purge", "--force-remove-reinstreq", "meterkin", "meterkin-theme")
        do("dpkg", "--install", self.old)
        publish(self.old, self.new)
        do("apt-get", "clean")
        shutil.rmtree("/var/lib/apt/lists", ignore_errors=True)
        Path("/etc/apt/sources.list").write_text(f"deb [{option}] http://127.0.0.1:{PORT} ./\n")
        do("ip", "route", "replace", "default", "dev", "lo")
        RULES.write_text(RULE % "polkit.Result.YES")

    def without_news(self):
        publish(self.old)

    def offline(self):
        do("ip", "route", "del", "default", "dev", "lo")

    def nobody_to_authorize(self):
        RULES.write_text(RULE % "null")

    def forbidden(self):
        RULES.write_text(RULE % "polkit.Result.NO")

    def unsigned(self):
        self.usual("allow-insecure=yes")
        publish(self.old, self.new, signs=False)

    def damaged(self):
        damaged = REPOSITORY / self.new.name
        content = damaged.read_bytes()
        middle = len(content) // 2
        damaged.write_bytes(content[:middle] + bytes(range(100)) + content[middle + 100:])

    def locked(self):
        self.lock = open("/var/lib/dpkg/lock-frontend", "w", encoding="utf-8")
        fcntl.lockf(self.lock, fcntl.LOCK_EX | fcntl.LOCK_NB)

    def upgrade(self):
        do("apt-get", "update")
        do("apt-get", "install", "--yes", "meterkin")

    def in_the_way(self):
        do("dpkg", "--install", build_special("1", "meterkin-theme"))
        publish(build_special(NEW, fields="Conflicts: meterkin-theme\n"))

    def slow(self):
        publish(build_special(NEW, before_installing="sleep 2"))

    def crash(self):
        answer = do("gdbus", "call", "--system", "--dest", "org.freedesktop.DBus", "--object-path",
                    "/", "--method", "org.freedesktop.DBus.GetConnectionUnixProcessID",
                    "org.freedesktop.PackageKit")
        os.kill(int(re.search(r"uint32 (\d+)", answer)[1]), signal.SIGKILL)


class Shop(http.server.SimpleHTTPRequestHandler):
    """The repository; what is posted puts the machine into a state."""
    machine = None

    def do_POST(self):
        try:
            getattr(self.machine, self.path[1:])()
            self.send_response(204)
        except Exception as error:      # whoever asked says it
            print(error, file=sys.stderr)
            self.send_response(500)
        self.end_headers()

    def log_message(self, *_):
        pass


def run_as_user():
    REPOSITORY.mkdir()
    Shop.machine = Machine()
    server = http.server.ThreadingHTTPServer(
        ("127.0.0.1", PORT), functools.partial(Shop, directory=REPOSITORY))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    user = pwd.getpwnam(USER)
    return subprocess.call(
        ["setpriv", f"--reuid={user.pw_uid}", f"--regid={user.pw_gid}", "--clear-groups", "env",
         f"{INSIDE}=user", f"HOME={user.pw_dir}", sys.executable, "-B", __file__, *sys.argv[1:]])


# --- inside, as a user: the program ------------------------------------------------------------

# What the machine is like, and what the window says of a check (None: an offer) and then of an
# installation.
FAULTS = (
    ("without_news", "up to date", None),
    ("offline", "no network connection", None),
    ("nobody_to_authorize", None, "permission"),
    ("forbidden", None, "permission"),
    ("unsigned", None, "signature"),
    ("damaged", None, "could not be downloaded|damaged"),
    ("locked", None, "Another program"),
    ("in_the_way", None, r"\(meterkin-theme\)"),
)


def ask_machine(state):
    urllib.request.urlopen(f"http://127.0.0.1:{PORT}/{state}", data=b"", timeout=60).close()


class TestUpdate(WindowCase):
    def setUp(self):
        super().setUp()
        ask_machine("usual")
        self.program_path = str(PROGRAM)

    def open_session(self):
        self.open_desktop("xfce4")
        del self.desktop.environment["DBUS_SYSTEM_BUS_ADDRESS"]     # the container's is ours

    def installed(self):
        return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", "meterkin"],
                              stdout=subprocess.PIPE, check=True, text=True).stdout

    def wait_to_show(self, pattern, seconds=60):
        seen = set()

        def shown():
            seen.clear()
            seen.update(self.shown())
            return next((label for label in seen if re.search(pattern, label)), None)
        try:
            return self.desktop.wait(shown, seconds, pattern)
        except TimeoutError as error:
            self.picture("failure")
            self.fail(f"{error}\n{sorted(seen)}")

    def picture(self, name):
        folder = os.environ.get("METERKIN_PICTURES")
        if folder:
            self.desktop.screenshot().write_png(Path(folder) / f"{name}.png")

    def start_checking(self):
        self.open_session()
        self.desktop.spawn(["dunst"], "dunst")
        self.start_readable()
        self.wait_for_item_in("xfce4", seconds=10)
        self.click_title()
        self.open_settings()
        self.act("page tab: About")
        self.picture("settings")
        self.act("push button: Check for Updates…")

    def test_from_the_click_to_the_new_version(self):
        self.start_checking()
        self.wait_to_show(f"Meterkin {NEW}")
        self.assertEqual(self.installed(), OLD)
        self.picture("offered")
        self.act("push button: Install")
        self.wait_to_show("is installed")
        self.assertEqual(self.installed(), NEW)
        self.picture("installed")
        time.sleep(5)       # by then another way to the restart would have been offered, too
        self.assertIsNone(self.notification())
        self.act("push button: Restart Now")
        self.desktop.wait(lambda: os.readlink(f"/proc/{self.program.pid}/exe") == str(PROGRAM),
                          what="the new program")
        self.wait_for_item_in("xfce4", seconds=10)
        self.stop()

    def test_upgrade_by_another_program(self):
        self.open_session()
        self.desktop.spawn(["dunst"], "dunst")
        self.start()
        self.wait_for_item_in("xfce4", seconds=10)
        ask_machine("upgrade")
        self.choose_notification("offered after an upgrade")
        self.desktop.wait(lambda: os.readlink(f"/proc/{self.program.pid}/exe") == str(PROGRAM),
                          what="the new program")
        self.wait_for_item_in("xfce4", seconds=10)
        self.stop()

    def test_what_stands_in_the_way(self):
        for state, check, installation in FAULTS:
            with self.subTest(state):
                ask_machine("usual")
                ask_machine(state)
                self.start_checking()
                if check:
                    self.wait_to_show(check)
                else:
                    self.wait_to_show(f"Meterkin {NEW}")
                    self.act("push button: Install")
                    self.wait_to_show(installation)
                self.picture(state)
                self.assertEqual(self.installed(), OLD)
                warning = rf"meterkin\.updates: .*({check or installation}).*\n"
                self.stop(warning="" if state == "without_news" else warning)

    def test_package_manager_crashes(self):
        ask_machine("slow")
        self.start_checking()
        self.wait_to_show(f"Meterkin {NEW}")
        self.act("push button: Install")
        self.wait_to_show("Installing update")
        self.picture("installing")
        ask_machine("crash")
        self.wait_to_show("ended before")
        self.picture("crash")
        self.stop(warning=r"meterkin\.updates: .*ended before.*\n")

    def test_not_from_a_package(self):
        self.program_path = os.environ["METERKIN_PROGRAM"]
        self.start_checking()
        self.wait_to_show("not installed as a package")
        self.stop(warning=r"meterkin\.updates: .*not installed as a package.*\n")

    def notification(self):
        found = [window for window in self.desktop.x.windows()
                 if window.viewable and window.name == "Dunst"]
        return found[0] if found else None

    def choose_notification(self, picture):
        rect = self.wait_for(self.notification).rect
        self.picture(picture)
        self.tool("mousemove", rect.x + rect.width // 2, rect.y + rect.height // 2, "click", 2)

    @unittest.skipUnless(FULL, "takes five minutes")
    def test_in_the_background(self):
        self.open_session()
        self.desktop.spawn(["dunst"], "dunst")
        self.start()
        self.wait_for_item_in("xfce4", seconds=10)
        self.desktop.wait(self.notification, 5 * 60 + 60)
        self.choose_notification("notification")
        self.wait_to_show(f"Meterkin {NEW} is downloaded and ready")
        self.picture("offered after a notification")
        self.assertEqual(self.installed(), OLD)
        self.stop()


def main():
    stage = os.environ.get(INSIDE)
    if stage == "user":
        return unittest.main()
    if stage == "root":
        # What follows takes the package manager to pieces.
        assert "upperdir=/mnt/changes" in Path("/proc/self/mounts").read_text(), "no container"
        return run_as_user()
    missing = [tool for tool in TOOLS if not shutil.which(tool)]
    if os.geteuid() != 0 or missing:
        print("skipped:", f"missing: {' '.join(missing)}" if missing else "needs to be root")
        return 0
    build_packages()
    os.environ["METERKIN_PROGRAM"] = str(UNPACKED / "usr/bin/meterkin")
    return enter_container()


if __name__ == "__main__":
    sys.exit(main())
