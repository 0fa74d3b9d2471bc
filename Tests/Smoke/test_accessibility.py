"""All that can be read, pressed and set, as a screen reader has it from the accessible tree."""
import subprocess
import unittest

from smoke_case import PATIENCE, Hardware
from window_case import TREE, WindowCase

CONTROLS = ("page tab", "push button", "check box", "combo box", "spin button", "list item")
TABS = {    # with all that the keyboard reaches
    "General": ("combo box: Show in menu bar:", "combo box: Read metrics every:",
                "check box: Enable global hotkey", "check box: Launch at login",
                "push button: Record"),
    "Alerts": ("check box: Fan Speed", "check box: Memory Usage", "check box: CPU Usage"),
    "About": ("check box: Automatically download updates",),
    "Thresholds": tuple(f"spin button: {metric}, {color} below:" for color in ("Green", "Yellow")
                        for metric in ("Fan Speed", "Memory Usage", "CPU Usage"))}
TOGGLES = dict(zip(
    (label for tab in TABS.values() for label in tab if label.startswith("check box")),
    ("hotkeyEnabled", "launchAtLogin", "alertFanSpeed", "alertMemory", "alertCPUUsage",
     "SUAutomaticallyUpdate")))
STEPPERS = (("Fan Speed, Green below:", "Increase", "do", "fanSpeedGreen=2100"),
            ("Memory Usage, Green below:", "55", "set", "memoryGreen=55"),
            ("Memory Usage, Yellow below:", "400", "set", "memoryYellow=100"))
CARDS = ("label: Memory Usage, 6.7 / 16.0 GB (42%)", "label: CPU Usage, 37.5%", "chart: Per-Core",
         "label: Fan Speed, 1850 RPM", "label: 1850 RPM, Range: 600 - 6000 RPM")
SCREENS = (("label: Welcome to meterkin", "push button: Get Started"),
           ("label: You're all set.", "label: 3200 RPM", "push button: Start Using meterkin"))


class TestAccessibility(WindowCase):
    settings = {"updateInterval": 0.5, "onboardingShown": "true"} | {
        key: "true" if index % 2 else "false" for index, key in enumerate(TOGGLES.values())}

    def start_listened_to(self, **settings):
        self.open_desktop()
        self.write_settings(**settings)
        self.hardware = Hardware(self.desktop.folder / "hardware")
        self.hardware.set_fan(1850)
        self.desktop.spawn([*TREE, "listen"], "focus", stderr=subprocess.DEVNULL)
        self.start_readable(self.hardware.command_prefix())
        self.wait_for_item(text="42%")

    def check(self, element, window):
        """What holds for every element of a tree that is not about to change."""
        label, states = element["label"], element["states"]
        self.assertNotIn(element["role"], ("", "unknown", "invalid"), label)
        self.assertTrue(element["actions"] or element["role"] not in CONTROLS, label)
        self.assertTrue(element["name"] or not {"focusable", "showing"} & set(states), label)
        if "showing" in states:
            self.assertTrue(element["rect"] and all(element["rect"][2:]), label)
            self.assertIn("showing", window["states"], label)

    def wait_to_show(self, *labels, gone=()):
        faults = []

        def shown():
            self.hardware.run_processor(75, 125)
            try:
                seen = self.shown(self.check)
            except AssertionError as fault:
                faults[:] = [fault]
                return None
            return [seen] if set(labels) <= set(seen) and not set(gone) & set(seen) else None
        try:
            return self.desktop.wait(shown, what=f"{labels} and no {gone} in the tree")[0]
        except TimeoutError as late:
            raise (faults or [late])[0]

    def act(self, label, wish="Press", verb="do", setting=""):
        """Also waits for the setting that comes of it."""
        super().act(label, wish, verb)
        self.desktop.wait(lambda: f"{setting}\n" in self.settings_file().read_text(), what=setting)

    def open_dashboard(self):
        self.desktop.run(self.program_path)     # a second start shows what the first one has
        return self.wait_to_show("frame: meterkin", *CARDS)

    def test_dashboard(self):
        self.start_listened_to()
        self.open_dashboard()
        chart = "chart: Per-Core"
        self.desktop.wait(lambda: self.wait_to_show(chart)[chart]["description"] == "38%, 38%",
                          what="both cores")
        self.act("push button: Quit meterkin")
        self.assertEqual((self.program.wait(PATIENCE), self.complaints()), (0, ""))

    def test_settings(self):
        self.start_listened_to()
        self.open_dashboard()
        self.act("push button: Open Settings")
        self.wait_to_show("frame: meterkin Settings", gone=["frame: meterkin"])
        for tab, controls in TABS.items():
            self.act(f"page tab: {tab}")
            seen = self.wait_to_show(*controls)
            self.assertEqual([label for label in seen if "selected" in seen[label]["states"]],
                             [f"page tab: {tab}"])
            tabs = [f"page tab: {name}" for name in TABS]
            self.assertCountEqual([label for label, element in seen.items() if element["role"] in
                                   CONTROLS and "focusable" in element["states"]],
                                  [*controls, *tabs])
            reached = [*controls, f"page tab: {tab}"]     # the other tabs by arrow keys
            self.desktop.run("xdotool", "key", *["Tab"] * len(reached))
            self.desktop.wait(lambda: sorted(self.desktop.log("focus").read_text().splitlines()
                                             [-len(reached):]) == sorted(reached), what=reached)
            for label in set(controls) & set(TOGGLES):
                checked = "checked" in seen[label]["states"]
                self.assertEqual(checked, self.settings[TOGGLES[label]] == "true", label)
                self.act(label, "Toggle", setting=f"{TOGGLES[label]}={str(not checked).lower()}")
                self.assertEqual("checked" in self.shown()[label]["states"], not checked, label)
        for name, wish, verb, setting in STEPPERS:
            self.act(f"spin button: {name}", wish, verb, setting)
            self.assertEqual(self.shown()[f"spin button: {name}"]["value"],
                             float(setting.partition("=")[2]))
        self.act("page tab: General")
        self.act("combo box: Show in menu bar:")
        self.act("list item: CPU Usage", setting="menuBarMetric=CPU Usage")
        self.act("combo box: Read metrics every:")
        self.wait_to_show("list item: 10 seconds")
        self.stop()     # with a list that is open

    def test_onboarding(self):
        self.start_listened_to(onboardingShown="false")
        for labels, others in (SCREENS, SCREENS[::-1]):
            self.wait_to_show(*labels, gone=others)
            self.act(labels[-1], setting="onboardingShown=true")
        self.wait_to_show(gone=["frame: meterkin"])
        self.stop()


if __name__ == "__main__":
    unittest.main()
