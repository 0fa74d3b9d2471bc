import QtQuick
import Meterkin.Views

// A symbol followed by a small text.
Row {
    id: label

    required property string symbol
    required property string text

    readonly property bool isMirrored: label.effectiveLayoutDirection === Qt.RightToLeft
    // An arrow is narrower than the square that it stands in.
    readonly property int inset: -Math.round(0.18 * picture.width)

    spacing: 3
    leftPadding: label.isMirrored ? 0 : label.inset
    rightPadding: label.isMirrored ? label.inset : 0

    SystemSymbol {
        id: picture

        anchors.verticalCenter: parent.verticalCenter
        name: label.symbol
        pointSize: Theme.points(10)
        color: Theme.secondary
    }

    CaptionText {
        text: label.text
    }
}
