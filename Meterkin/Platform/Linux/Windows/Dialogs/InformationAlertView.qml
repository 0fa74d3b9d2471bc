import QtQuick
import Meterkin.Views

// A short message and a button that closes it.
FocusScope {
    id: view

    required property string messageText
    required property string informativeText

    readonly property color color: Theme.windowBackground

    signal closeRequested()

    LayoutMirroring.enabled: Appearance.mirrored
    LayoutMirroring.childrenInherit: true
    implicitWidth: 400 * Appearance.textScale
    implicitHeight: 20 + Math.max(icon.height, texts.height) + 20 + button.height + 20
    Accessible.role: Accessible.AlertMessage
    Accessible.name: view.messageText
    Accessible.description: view.informativeText
    Keys.onEscapePressed: view.closeRequested()
    Keys.onPressed: event => event.accepted = area.scrollByKey(event.key)

    Plate {
        anchors.fill: parent
        color: view.color
    }
    ProgramIcon {
        id: icon

        anchors.left: parent.left
        anchors.leftMargin: 20
        y: 20
        width: Theme.points(56)
        height: width
        Accessible.ignored: true
    }
    ScrollArea {
        id: area

        anchors.left: icon.right
        anchors.leftMargin: 16
        anchors.right: parent.right
        y: 20 + Math.max(0, (icon.height - texts.height) / 2)
        height: Math.max(0, Math.min(texts.height, button.y - 20 - y))
        content: texts

        Column {
            id: texts

            anchors.left: parent.left
            width: area.width - 20
            spacing: 6

            PlainText {
                width: parent.width
                text: view.messageText
                font.pixelSize: Theme.points(14)
                font.weight: Font.DemiBold
            }
            PlainText {
                width: parent.width
                text: view.informativeText
            }
        }
    }
    WideButton {
        id: button

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 20
        text: qsTr("OK")
        focus: true
        isDefault: true
        onClicked: view.closeRequested()
    }
}
