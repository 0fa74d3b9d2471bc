import QtQuick
import Meterkin.Views

// A tool tip above its parent and within the window, a while after it is wanted.
Plate {
    id: tip

    required property string text
    required property bool isWanted

    readonly property int delay: 700 // milliseconds
    readonly property int margin: 6

    function show(): void {
        const left = tip.parent.mapToItem(null, 0, 0).x
        const last = tip.Window.width - tip.margin - tip.width - left
        tip.x = Math.max(tip.margin - left, Math.min((tip.parent.width - tip.width) / 2, last))
        tip.visible = true
    }

    y: -height - 4
    width: content.implicitWidth + 2 * 7
    height: content.implicitHeight + 2 * 4
    visible: false
    radius: 4
    color: Theme.controlBackground
    lineColor: Theme.faded(Theme.primary, 0.16)
    onIsWantedChanged: tip.visible = false

    Accessible.role: Accessible.ToolTip
    Accessible.name: tip.text

    Text {
        id: content

        anchors.centerIn: parent
        text: tip.text
        color: Theme.primary
        font.pixelSize: Theme.points(11)
        Accessible.ignored: true
    }

    Timer {
        interval: tip.delay
        running: tip.isWanted
        onTriggered: tip.show()
    }
}
