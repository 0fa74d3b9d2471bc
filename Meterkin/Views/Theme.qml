pragma Singleton

import QtQuick
import Meterkin.Views

// The colours of every view, for light and dark desktops: the system's own where it has them, else
// ours. Our text colours have a contrast of at least 4.5:1 on their backgrounds, the tier colours at
// least 3:1.
QtObject {
    readonly property bool dark: Appearance.dark
    readonly property systemColors system: Appearance.systemColors

    readonly property color windowBackground: either(system.windowBackground, dark ? "#2a2a2e" : "#f4f4f6")
    readonly property color controlBackground: either(system.controlBackground, dark ? "#1c1c1f" : "#ffffff")
    readonly property color primary: either(system.primary, dark ? "#f2f2f4" : "#1d1d1f")
    readonly property color secondary: either(system.secondary, dark ? "#adadb4" : "#5c5c63")
    readonly property color separator: either(system.separator, dark ? "#45454b" : "#d5d5da")
    readonly property color controlBorder: dark ? "#8a8a92" : "#8a8a91"
    readonly property color accent: either(system.accent, dark ? "#4c9dff" : "#0b62d0")
    readonly property color textOnAccent: either(system.textOnAccent, dark ? "#101014" : "#ffffff")
    readonly property color orange: either(system.orange, dark ? "#ff9f40" : "#b04700")

    readonly property color green: either(system.green, dark ? "#3ddc68" : "#1a7a35")
    readonly property color yellow: either(system.yellow, dark ? "#f5c518" : "#946700")
    readonly property color red: either(system.red, dark ? "#ff7069" : "#c41e26")

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
}
