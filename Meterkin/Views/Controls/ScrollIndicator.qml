import QtQuick
import Meterkin.Views

// A narrow scroll bar over the content, visible when there is something to scroll.
Item {
    id: bar

    required property real contentHeight
    required property real contentY

    readonly property int padding: 2
    readonly property real track: height - 2 * padding
    readonly property real room: track - handle.height // that the handle moves in
    readonly property real end: contentHeight - height // the greatest contentY

    signal moved(contentY: real)

    function moveTo(y: real): void {
        bar.moved(Math.max(0, Math.min(bar.end, y)))
    }

    anchors.right: parent.right
    width: 8
    height: parent.height
    visible: bar.end > 0
    Accessible.ignored: true

    Plate {
        id: handle

        x: bar.padding
        y: bar.padding + bar.room * bar.contentY / bar.end
        width: 4
        height: Math.max(0.1, bar.height / bar.contentHeight) * bar.track
        radius: 2
        color: Theme.faded(Theme.primary, area.pressed ? 0.6 : area.containsMouse ? 0.45 : 0.3)
    }

    MouseArea {
        id: area

        property real grip // from the top of the handle

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: event => {
            const place = event.y - handle.y
            area.grip = place >= 0 && place <= handle.height ? place : handle.height / 2
        }
        onPositionChanged: event => {
            if (area.pressed)
                bar.moveTo((event.y - area.grip - bar.padding) / bar.room * bar.end)
        }
    }
}
