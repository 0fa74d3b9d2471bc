import QtQuick
import Meterkin.Views

// The first fan's card, and a row for each fan.
Column {
    id: section

    required property metricCard card
    required property list<fanRow> fans

    spacing: 8

    MetricCardView {
        objectName: "fanCard"
        width: parent.width
        card: section.card
    }

    Repeater {
        model: section.fans

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
    }
}
