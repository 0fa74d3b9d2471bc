import QtQuick
import Meterkin.Views

// A small text behind its symbol.
Row {
    id: label

    required property string symbol
    required property string text

    spacing: 3

    SystemSymbol {
        anchors.verticalCenter: parent.verticalCenter
        name: label.symbol
        pointSize: Theme.points(10)
        color: Theme.secondary
    }

    CaptionText {
        text: label.text
    }
}
