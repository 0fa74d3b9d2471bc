pragma Singleton

import QtQuick
import Meterkin.Views

// The colours of every view, for light and dark desktops: the system's own where it has them, else
// ours. Our texts have a contrast of at least 4.5:1 on their backgrounds; the tier colours and
// orange, which are for large texts and drawings, of 3:1.
QtObject {
    readonly property bool dark: Appearance.dark
    readonly property systemColors system: Appearance.systemColors

    readonly property color windowBackground: either(system.windowBackground, dark ? "#1c1c1f" : "#e9e9ee")
    readonly property color controlBackground: either(system.controlBackground, dark ? "#3c3c42" : "#ffffff")
    readonly property color separator: either(system.separator, dark ? "#3f3f45" : "#d0d0d7")
    readonly property color card: faded(controlBackground, 0.5)
    readonly property color cardLine: faded(primary, 0.06)
    readonly property color control: faded(primary, dark ? 0.1 : 0.07) // what can be pressed
    readonly property color well: dark ? faded("#000000", 0.25) : controlBackground // to type in
    readonly property color knob: "#ffffff"
    readonly property color emptyTrack: dark ? "#5c5c64" : "#8e8e96"

    readonly property color primary: either(system.primary, dark ? "#f2f2f4" : "#1d1d1f")
    readonly property color secondary: either(system.secondary, dark ? "#adadb4" : "#5c5c63")
    readonly property color warning: either(system.orange, dark ? "#ff9f40" : "#b84d00")
    readonly property color danger: either(system.red, dark ? "#ff9f99" : "#c01822")
    // As a ground, and as a text or a line.
    readonly property color accent: either(system.accent, dark ? "#1f6feb" : "#0b62d0")
    readonly property color textOnAccent: either(system.textOnAccent, "#ffffff")
    readonly property color highlight: either(system.accent, dark ? "#66adff" : "#0b62d0")

    readonly property color orange: either(system.orange, dark ? "#ff9533" : "#d86000")
    readonly property color green: either(system.green, TierColors.of(ThresholdTier.Green, dark))
    readonly property color yellow: either(system.yellow, TierColors.of(ThresholdTier.Yellow, dark))
    readonly property color red: either(system.red, TierColors.of(ThresholdTier.Red, dark))

    function either(system: color, own: color): color {
        return system.valid ? system : own
    }

    // Pixels for a text designed with that many points.
    function points(size: real): int {
        return Math.round(size * Appearance.textScale)
    }

    function tierColor(tier: int): color {
        return tier === ThresholdTier.Green ? green : tier === ThresholdTier.Yellow ? yellow : red
    }

    function faded(color: color, opacity: real): color {
        return Qt.rgba(color.r, color.g, color.b, color.a * opacity)
    }

    // A control, as the pointer has it.
    function fill(isPressed: bool, isHovered: bool): color {
        return faded(control, isPressed ? 2 : isHovered ? 1.5 : 1)
    }
}
