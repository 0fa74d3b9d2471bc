import QtQuick
import Meterkin.Views

// A symbol followed by a small text.
Row {
    id: label

    required property string symbol
    required property string text

    spacing: 3
    // An arrow is narrower than the square that it stands in.
    leftPadding: -Math.round(0.18 * picture.width)

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
