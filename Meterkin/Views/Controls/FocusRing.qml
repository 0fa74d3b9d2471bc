import QtQuick
import Meterkin.Views

// Drawn around its parent while that has the keyboard focus.
Rectangle {
    id: ring

    property real distance: 2
    property real innerRadius: 6

    anchors.fill: parent
    anchors.margins: -ring.distance - 2
    color: "transparent"
    border.color: Theme.accent
    border.width: 2
    radius: ring.innerRadius + ring.distance + 2
    Accessible.ignored: true
}
