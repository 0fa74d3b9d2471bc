import QtQuick
import Meterkin.Views

// One fan's label and range, as far as it has them.
Row {
    id: row

    required property fanRow modelData

    x: 12
    spacing: 8
    visible: modelData.label.length > 0 || modelData.range.length > 0

    Accessible.role: Accessible.StaticText
    Accessible.name: modelData.accessibleText

    CaptionText {
        text: row.modelData.label
        color: Theme.primary
        font.weight: Font.Medium
        visible: row.modelData.label.length > 0
    }

    CaptionText {
        text: row.modelData.range
    }
}
