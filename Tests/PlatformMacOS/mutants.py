"""Puts one fault after the other into a copy of the tree; the checks have to find each of them."""
import os
import subprocess
import sys
import time
from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parents[2]
COPY = ROOT / "build/mutants"
STEPS = ["fakes", "layouts", "cross", "symbols", "bundle"]


class Mutant(NamedTuple):
    name: str
    file: str
    old: str    # stands there exactly once
    new: str
    step: str = "fakes"    # that finds it


MAC = "Meterkin/Platform/macOS/"
MUTANTS = [
    Mutant("size of what is freed", MAC + "MachProcessorTicks.cpp",
           "m_words.size_bytes()", "m_words.size()"),
    Mutant("words asked of the kernel", MAC + "MachPageCounters.cpp",
           "RequestedWords = 40", "RequestedWords = 38"),
    Mutant("offset of a counter", "Tests/PlatformMacOS/Fakes/Headers/mach/mach_types.h",
           "    natural_t internal_page_count;\n",
           "    natural_t internal_page_count;\n    uint64_t swapped;\n", step="layouts"),
    Mutant("selector of the driver", MAC + "SMCUserClient.cpp",
           "KeyDataSelector = 2", "KeyDataSelector = 5"),
    Mutant("offset in the record", "Meterkin/Platform/FanControllerConnection.h",
           "std::uint8_t command = 0;", "std::uint16_t command = 0;"),
    Mutant("release of the service", MAC + "SMCUserClient.cpp",
           "    IOObjectRelease(service);\n", ""),
    Mutant("kind of the event", MAC + "CarbonHotkey.cpp",
           "{kEventClassKeyboard, kEventHotKeyPressed}", "{kEventClassKeyboard, 6}"),
    Mutant("removal of the handler", MAC + "CarbonHotkey.cpp",
           "    RemoveEventHandler(handler);\n", "    static_cast<void>(handler);\n"),
    Mutant("type of what is stored", MAC + "UserDefaultsStore.mm", "setDouble:value",
           "setFloat:static_cast<float>(value)"),
    Mutant("status of the login item", MAC + "MainAppService.mm",
           "== SMAppServiceStatusEnabled", "!= SMAppServiceStatusNotRegistered"),
    Mutant("options of the permission", MAC + "UserNotificationCentre.mm",
           "UNAuthorizationOptionAlert | UNAuthorizationOptionSound",
           "UNAuthorizationOptionAlert | UNAuthorizationOptionBadge"),
    Mutant("removal of the observer", MAC + "SparkleFramework.mm",
           "if (m_objects && m_objects->observer != nil)", "if (false)"),
    Mutant("order of the arguments", MAC + "HdiutilDiskImages.cpp",
           '{QStringLiteral("detach"), mountPoint, QStringLiteral("-quiet")}',
           '{QStringLiteral("detach"), QStringLiteral("-quiet"), mountPoint}'),
    Mutant("selector of the Trash", MAC + "Trash.mm", "resultingItemURL:nullptr", "toURL:nullptr"),
    Mutant("selector of the action", MAC + "AppKitStatusItem.mm",
           "@selector(statusItemClicked);", "@selector(statusItemClicked:);"),
    Mutant("weight of the font", MAC + "AppKitStatusItem.mm",
           "weight:NSFontWeightMedium", "weight:NSFontWeightRegular"),
    Mutant("colour space", MAC + "AppKitColors.mm",
           "[color colorUsingColorSpace:NSColorSpace.deviceRGBColorSpace]", "color"),
    Mutant("release of the colour space", MAC + "AppKitSymbols.mm",
           "    CGColorSpaceRelease(space);\n", ""),
    Mutant("edge of the popover", MAC + "AppKitPopover.mm",
           "preferredEdge:NSRectEdgeMinY", "preferredEdge:NSRectEdgeMaxY"),
    Mutant("windows that stay", MAC + "AppKitPopover.mm",
           "if (NSApp.active && !hasTitledWindow())", "if (NSApp.active)"),
    Mutant("memory given back", MAC + "MacPlatform.cpp",
           "malloc_zone_pressure_relief(nullptr, 0);", ""),
    Mutant("order of a window's look", MAC + "AppKitWindowStyle.mm",
           "    native.titlebarAppearsTransparent = YES;\n"
           "    native.titleVisibility = NSWindowTitleHidden;\n",
           "    native.titleVisibility = NSWindowTitleHidden;\n"
           "    native.titlebarAppearsTransparent = YES;\n"),
    Mutant("removal of the key monitor", MAC + "LocalKeyMonitor.mm",
           "    [NSEvent removeMonitor:m_objects->monitor];\n", ""),
    Mutant("order of the launch", "Meterkin/AppDelegate.cpp",
           "    m_statusItem = m_platform.makeStatusItem();\n",
           "    synchronizeLaunchAtLogin(m_settingsVM, m_platform.loginItem());\n"
           "    m_statusItem = m_platform.makeStatusItem();\n"),
    Mutant("a framework not linked", MAC + "CMakeLists.txt", '"-framework IOKit" ', "", step="cross"),
    Mutant("folder of the update framework", MAC + "CMakeLists.txt",
           "target_link_options(MeterkinBackend INTERFACE -F${METERKIN_SPARKLE})", "",
           step="cross"),
    Mutant("where the frameworks lie", "packaging/macOS/Bundle.cmake",
           "@executable_path/../Frameworks", "@executable_path/../Framework", step="bundle"),
    Mutant("identifier of the bundle", "packaging/macOS/Info.plist.in",
           "<string>org.meterkin.Meterkin</string>", "<string>org.meterkin.meterkin</string>",
           step="bundle"),
    Mutant("hardened runtime", "scripts/package-macos",
           "--options runtime --timestamp", "--timestamp", step="bundle"),
]


def copy_tree():
    """Only what differs is written, so that what was built before still holds."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            cwd=ROOT, check=True, capture_output=True, text=True).stdout
    names = {name for name in listed.split("\0") if name and (ROOT / name).is_file()}
    for folder, _, files in os.walk(COPY, topdown=False):
        path = Path(folder)
        if path == COPY or path.relative_to(COPY).parts[0] == "build":
            continue
        for file in files:
            if str((path / file).relative_to(COPY)) not in names:
                (path / file).unlink()
        if not any(path.iterdir()):
            path.rmdir()
    for name in names:
        source, target = ROOT / name, COPY / name
        content = source.read_bytes()
        if not target.is_file() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            target.chmod(source.stat().st_mode)


def fault():
    """The first step that fails in the copy, and what it said; nothing when all hold."""
    for step in STEPS:
        run = subprocess.run(["scripts/check-macos", step], cwd=COPY, capture_output=True, text=True)
        if run.returncode:
            return step, run.stdout + run.stderr
    return None


def try_mutant(mutant):
    path = COPY / mutant.file
    text = path.read_text()
    if text.count(mutant.old) != 1:
        sys.exit(f"{mutant.name}: {mutant.old!r} stands {text.count(mutant.old)} times"
                 f" in {mutant.file}")
    path.write_text(text.replace(mutant.old, mutant.new))
    try:
        return fault()
    finally:
        path.write_text(text)


def main():
    started = time.monotonic()
    copy_tree()
    print("Checking the copy without any fault ...", flush=True)
    found = fault()
    if found:
        sys.exit(f"{found[1]}\nmutants: {found[0]} fails without any fault put in")

    survivors = 0
    for mutant in MUTANTS:
        found = try_mutant(mutant)
        found_by = found[0] if found else "nothing"
        survivors += found_by != mutant.step
        note = "" if found_by == mutant.step else f", and should be by {mutant.step}"
        print(f"found by {found_by}: {mutant.name} ({mutant.file}){note}", flush=True)
    print(f"{len(MUTANTS) - survivors} of {len(MUTANTS)} faults found where they should be, in"
          f" {time.monotonic() - started:.0f} s")
    sys.exit(1 if survivors else 0)


main()
