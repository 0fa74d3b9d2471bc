import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// What is new, in a box of bounded height that scrolls. The text comes from outside.
Rectangle {
    id: box

    required property string notes

    readonly property real mostHeight: 168 * Appearance.textScale
    readonly property real lineHeight: Theme.points(16)

    implicitHeight: Math.min(box.mostHeight, text.implicitHeight + 20)
    radius: 6
    color: Theme.controlBackground
    border.width: 1
    border.color: Theme.separator
    activeFocusOnTab: true
    Accessible.role: Accessible.StaticText
    Accessible.focusable: true
    Accessible.name: "Release notes"
    Accessible.description: text.text
    Keys.onUpPressed: flickable.scrollBy(-box.lineHeight)
    Keys.onDownPressed: flickable.scrollBy(box.lineHeight)
    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_PageUp)
            flickable.scrollBy(box.lineHeight - flickable.height)
        else if (event.key === Qt.Key_PageDown)
            flickable.scrollBy(flickable.height - box.lineHeight)
        else if (event.key === Qt.Key_Home)
            flickable.scrollBy(-flickable.contentHeight)
        else if (event.key === Qt.Key_End)
            flickable.scrollBy(flickable.contentHeight)
        else
            event.accepted = false
    }

    Flickable {
        id: flickable

        function scrollBy(distance: real): void {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + distance))
        }

        anchors.fill: parent
        anchors.margins: 1
        contentHeight: text.implicitHeight + 18
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        T.ScrollBar.vertical: ScrollIndicator {
            Accessible.ignored: true
        }

        Text {
            id: text

            x: 11
            y: 9
            width: flickable.width - 22
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
