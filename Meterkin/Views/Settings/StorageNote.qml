import QtQuick
import Meterkin.Views

// Says why changes cannot be stored; takes no space while they can.
Item {
    id: note

    required property string problem

    visible: note.problem !== ""
    implicitHeight: note.problem !== "" ? text.implicitHeight + 20 : 0

    Hairline {
        width: note.width
    }
    Text {
        id: text
        anchors.centerIn: note
        width: note.width - 40
        text: qsTr("Changes cannot be stored and last until you quit: %1").arg(note.problem)
        font.pixelSize: Theme.points(11)
        color: Theme.warning
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text.text
    }
}
