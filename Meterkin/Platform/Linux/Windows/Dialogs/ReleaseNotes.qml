import QtQuick
import Meterkin.Views

// The release notes of an update, plain text from a server, in a box that scrolls.
Plate {
    id: box

    required property string notes

    readonly property real mostHeight: 168 * Appearance.textScale

    implicitHeight: Math.min(box.mostHeight, text.implicitHeight + 2)
    radius: 6
    color: Theme.card
    lineColor: Theme.cardLine
    activeFocusOnTab: true
    Accessible.role: Accessible.StaticText
    Accessible.focusable: true
    Accessible.name: qsTr("Release notes")
    Accessible.description: text.text
    Keys.onPressed: event => event.accepted = area.scrollByKey(event.key)

    ScrollArea {
        id: area

        anchors.fill: parent
        anchors.margins: 1
        content: text

        Text {
            id: text

            width: area.width
            leftPadding: 11
            rightPadding: 11
            topPadding: 9
            bottomPadding: 9
            text: box.notes.trim()
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            lineHeight: 1.1
            font.pixelSize: Theme.points(12)
            color: Theme.primary
            Accessible.ignored: true
        }
    }
    FocusRing {
        distance: 0
        visible: box.activeFocus
    }
}
