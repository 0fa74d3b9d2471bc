import QtQuick
import Meterkin.Views

// A reading as the status item shows it.
Item {
    id: reading

    required property string symbol
    required property string text
    required property color color

    implicitWidth: label.x + label.width
    implicitHeight: Math.max(picture.height, label.height)

    SystemSymbol {
        id: picture

        anchors.verticalCenter: parent.verticalCenter
        name: reading.symbol
        pointSize: Theme.points(16)
        color: reading.color
        Accessible.ignored: true
    }
    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: picture.width + Theme.points(6)
        text: reading.text
        font.pixelSize: Theme.points(13)
        font.weight: Font.Medium
        color: reading.color
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
