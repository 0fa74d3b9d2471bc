import QtQuick
import Meterkin.Views

// One fan's label and range; its speed where it has no range.
Item {
    id: view

    required property fanRow modelData

    implicitWidth: texts.implicitWidth
    implicitHeight: texts.implicitHeight

    Accessible.role: Accessible.StaticText
    Accessible.name: modelData.accessibleText

    Row {
        id: texts

        spacing: 8

        CaptionText {
            text: view.modelData.label
            color: Theme.primary
            font.weight: Font.Medium
            visible: view.modelData.label.length > 0
        }

        CaptionText {
            text: view.modelData.text
        }
    }

    HoverHandler {
        id: pointer
    }

    HoverTip {
        text: view.modelData.speed
        isWanted: pointer.hovered && view.modelData.hasRange
    }
}
