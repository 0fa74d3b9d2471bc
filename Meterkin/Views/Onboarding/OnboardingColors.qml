pragma Singleton

import QtQuick

// The onboarding is dark in either appearance of the desktop, so it has colours of its own.
// Texts keep 4.5:1 on what they stand on.
QtObject {
    readonly property color background: Qt.rgba(13 / 255, 17 / 255, 23 / 255, 1)
    readonly property color border: "#2b323c"
    readonly property color strip: "#1b222c"
    readonly property color tile: "#161c25"
    readonly property color primary: "#f0f3f6"
    readonly property color secondary: "#a3adb9"
    readonly property color accent: "#1a63d8"
    readonly property color accentHovered: "#1f6feb"
    readonly property color accentPressed: "#1453b8"
    readonly property color accentText: "#ffffff"
    readonly property color focusRing: "#79b8ff"
    readonly property color orange: "#ff9533"
    readonly property color blue: "#58a6ff"
}
