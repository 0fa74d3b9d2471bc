import QtQuick
import Meterkin.Views

// Shows the hot key and records another one.
FormRow {
    id: row

    required property HotkeyRecorder recorder

    label: qsTr("Shortcut:")
    // Recording while hidden would swallow keys for no visible reason.
    onVisibleChanged: {
        if (!row.visible)
            row.recorder.cancel()
    }

    // The buttons do not move, so that a double click never hits two of them.
    Item {
        width: parent.width
        height: recordButton.height

        Text {
            anchors.left: parent.left
            anchors.right: recordButton.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            horizontalAlignment: Text.AlignLeft
            text: row.recorder.isRecording ? qsTr("Press a key combination...") : row.recorder.displayText
            font.pixelSize: Theme.points(13)
            color: row.recorder.isRecording ? Theme.warning
                : row.recorder.isSet ? Theme.primary : Theme.secondary
            elide: Text.ElideRight
            Accessible.role: Accessible.StaticText
            Accessible.name: row.label + " " + text
        }
        TextMetrics {
            id: record
            font: recordButton.font
            text: qsTr("Record")
        }
        TextMetrics {
            id: cancel
            font: recordButton.font
            text: qsTr("Cancel")
        }
        PushButton {
            id: recordButton
            anchors.right: clearButton.left
            anchors.rightMargin: 8
            width: Math.ceil(Math.max(record.advanceWidth, cancel.advanceWidth)) + leftPadding + rightPadding
            text: row.recorder.isRecording ? cancel.text : record.text
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
            anchors.right: parent.right
            visible: row.recorder.canClear
            text: qsTr("Clear")
            font.pixelSize: Theme.points(11)
            textColor: Theme.danger
            onClicked: {
                // The button disappears; the focus stays in the row.
                if (clearButton.visualFocus)
                    recordButton.forceActiveFocus(Qt.TabFocusReason)
                row.recorder.clear()
            }
        }
    }
}
