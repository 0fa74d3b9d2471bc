import QtQuick
import Meterkin.Views

OnboardingReveal {
    id: feature

    required property string symbol
    required property color tint
    required property string text

    readonly property real gap: Theme.points(16)
    readonly property real usedWidth: tile.width + gap + label.contentWidth

    duration: 350
    implicitHeight: Math.max(tile.height, label.height)

    Plate {
        id: tile

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.points(36)
        height: width
        radius: Theme.points(10)
        color: OnboardingColors.tile
        lineColor: OnboardingColors.border

        SystemSymbol {
            anchors.centerIn: parent
            name: feature.symbol
            pointSize: Theme.points(17)
            color: feature.tint
            Accessible.ignored: true
        }
    }
    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: tile.right
        anchors.leftMargin: feature.gap
        anchors.right: parent.right
        text: feature.text
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.WordWrap
        lineHeight: 1.15
        font.pixelSize: Theme.points(13)
        color: OnboardingColors.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
