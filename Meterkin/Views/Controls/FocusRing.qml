import QtQuick
import Meterkin.Views

// Drawn around its parent while that has the keyboard focus.
Plate {
    id: ring

    property real distance: 2
    property real innerRadius: 6

    anchors.fill: parent
    anchors.margins: -ring.distance - 2
    lineColor: Theme.highlight
    lineWidth: 2
    radius: ring.innerRadius + ring.distance + 2
    Accessible.ignored: true
}
