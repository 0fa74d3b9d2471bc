import QtQuick
import Meterkin.Views

// The memory card and what the memory is used for.
Column {
    id: section

    required property metricCard card
    required property list<string> breakdown

    // The platform's own distance between two rows of a stack.
    spacing: 8

    MetricCardView {
        objectName: "memoryCard"
        width: parent.width
        card: section.card
    }

    Flow {
        objectName: "memoryBreakdown"
        x: 12
        width: parent.width - 2 * 12
        spacing: 8
        visible: section.breakdown.length > 0

        Repeater {
            model: section.breakdown

            CaptionText {
                required property string modelData

                text: modelData
                Accessible.ignored: false
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
