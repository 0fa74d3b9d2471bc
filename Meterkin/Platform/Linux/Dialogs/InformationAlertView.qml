import QtQuick
import Meterkin.Views

// A short message that waits to be read.
FocusScope {
    id: view

    required property string messageText
    required property string informativeText

    readonly property color color: Theme.windowBackground

    signal closeRequested()

    implicitWidth: 400 * Appearance.textScale
    implicitHeight: 20 + Math.max(icon.height, texts.height) + 20 + button.height + 20
    Accessible.role: Accessible.AlertMessage
    Accessible.name: view.messageText
    Accessible.description: view.informativeText
    Keys.onEscapePressed: view.closeRequested()

    Rectangle {
        anchors.fill: parent
        color: view.color
    }
    ProgramIcon {
        id: icon

        x: 20
        y: 20
        width: Theme.points(56)
        height: width
        Accessible.ignored: true
    }
    Column {
        id: texts

        anchors.left: icon.right
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.rightMargin: 20
        y: 20 + Math.max(0, (icon.height - height) / 2)
        spacing: 6

        DialogText {
            width: parent.width
            text: view.messageText
            font.pixelSize: Theme.points(14)
            font.weight: Font.DemiBold
        }
        DialogText {
            width: parent.width
            text: view.informativeText
        }
    }
    DialogButton {
        id: button

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 20
        text: "OK"
        focus: true
        isDefault: true
        onClicked: view.closeRequested()
    }
}
