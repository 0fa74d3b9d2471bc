import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// A tool tip above its control.
T.ToolTip {
    id: tip

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: -implicitHeight - 4
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 7
    verticalPadding: 4
    margins: 6
    delay: 700

    contentItem: Text {
        text: tip.text
        color: Theme.primary
        font.pixelSize: Theme.points(11)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: 4
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.separator
    }
}
