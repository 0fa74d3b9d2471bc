import QtQuick
import Meterkin.Views

// A row of a section: a label with its control at the end, or a control that fills the row.
Item {
    id: row

    property string label
    default property alias content: place.data
    readonly property Item held: place.children[0] // the only one
    readonly property real inset: 12
    readonly property real distance: 8
    property bool isApart: true // else it belongs to the row above

    width: parent ? parent.width : 0
    implicitHeight: row.isApart
        ? Math.max(40, Math.max(text.implicitHeight, place.height) + 2 * row.distance)
        : place.height + row.distance

    Hairline {
        anchors.left: row.left
        anchors.leftMargin: row.inset
        anchors.right: row.right
        visible: row.isApart && row.y > 0
    }
    Text {
        id: text
        anchors.left: row.left
        anchors.leftMargin: row.inset
        anchors.verticalCenter: row.verticalCenter
        text: row.label
        font.pixelSize: Theme.points(13)
        color: Theme.primary
        Accessible.ignored: true
    }
    Item {
        id: place
        anchors.left: row.label === "" ? row.left : text.right
        anchors.leftMargin: row.inset
        anchors.right: row.right
        anchors.rightMargin: row.inset
        height: row.held ? row.held.height : 0
        anchors.verticalCenter: row.verticalCenter
        anchors.verticalCenterOffset: row.isApart ? 0 : -row.distance / 2
    }
}
