import QtQuick
import Meterkin.Views

// A reading as the status item shows it.
Item {
    id: reading

    required property string symbol
    required property string text
    required property color color

    readonly property real gap: Theme.points(6)

    implicitWidth: picture.width + gap + label.width
    implicitHeight: Math.max(picture.height, label.height)

    SystemSymbol {
        id: picture

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        name: reading.symbol
        pointSize: Theme.points(16)
        color: reading.color
        Accessible.ignored: true
    }
    Text {
        id: label

        anchors.left: picture.right
        anchors.leftMargin: reading.gap
        anchors.verticalCenter: parent.verticalCenter
        text: reading.text
        font.pixelSize: Theme.points(13)
        font.weight: Font.Medium
        color: reading.color
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
