import QtQuick
import Meterkin.Views

// Shows the hot key and records another one.
FormRow {
    id: row

    required property HotkeyRecorder recorder

    label: "Shortcut:"
    // Out of sight nobody would know why keys are lost.
    onVisibleChanged: {
        if (!row.visible)
            row.recorder.cancel()
    }

    Item {
        width: parent.width
        height: buttons.height

        Text {
            objectName: "hotkeyText"
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - buttons.width - 8
            text: row.recorder.isRecording ? "Press a key combination..." : row.recorder.displayText
            font.pixelSize: Theme.points(13)
            color: row.recorder.isRecording ? Theme.orange
                : row.recorder.isSet ? Theme.primary : Theme.secondary
            elide: Text.ElideRight
            Accessible.role: Accessible.StaticText
            Accessible.name: row.label + " " + text
        }
        Row {
            id: buttons
            anchors.right: parent.right
            spacing: 8

            PushButton {
                id: recordButton
                objectName: "record"
                text: row.recorder.isRecording ? "Cancel" : "Record"
                font.pixelSize: Theme.points(11)
                onClicked: {
                    if (row.recorder.isRecording)
                        row.recorder.cancel()
                    else
                        row.recorder.record()
                }
            }
            PushButton {
                id: clearButton
                objectName: "clear"
                visible: row.recorder.canClear
                text: "Clear"
                font.pixelSize: Theme.points(11)
                textColor: Theme.red
                onClicked: {
                    // The button goes; the keyboard stays in the row.
                    if (clearButton.visualFocus)
                        recordButton.forceActiveFocus(Qt.TabFocusReason)
                    row.recorder.clear()
                }
            }
        }
    }
}
