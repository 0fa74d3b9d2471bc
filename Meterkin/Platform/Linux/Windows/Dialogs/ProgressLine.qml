import QtQuick
import Meterkin.Views

// A progress bar: it fills, or a piece moves to and fro while the progress is not known.
Plate {
    id: line

    required property int percent // -1: not known

    // Assistive technologies read these properties.
    readonly property real value: Math.max(0, line.percent)
    readonly property real minimumValue: 0
    readonly property real maximumValue: 100

    readonly property bool isMirrored: line.LayoutMirroring.enabled
    readonly property bool isIndeterminate: line.percent < 0

    implicitHeight: 6
    radius: height / 2
    color: Theme.control
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Progress")

    Plate {
        id: bar

        property real place: 0.5 // of the moving piece, 0 to 1

        x: line.isIndeterminate ? Math.round(bar.place * (line.width - width))
            : line.isMirrored ? line.width - width : 0
        width: Math.round(line.isIndeterminate ? 0.28 * line.width
            : Math.max(height, line.width * line.value / 100))
        height: parent.height
        radius: height / 2
        color: Theme.accent
        visible: line.percent !== 0
    }
    WindowSight {
        id: sight
    }
    SequentialAnimation {
        running: line.isIndeterminate && line.visible && sight.isSeen && !Appearance.reducesMotion
        loops: Animation.Infinite

        NumberAnimation {
            target: bar
            property: "place"
            from: 0
            to: 1
            duration: 1400
            easing.type: Easing.InOutSine
        }
        NumberAnimation {
            target: bar
            property: "place"
            from: 1
            to: 0
            duration: 1400
            easing.type: Easing.InOutSine
        }
    }
}
