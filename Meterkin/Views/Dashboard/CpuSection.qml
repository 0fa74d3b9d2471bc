import QtQuick
import Meterkin.Views

// The CPU card and a bar for each core.
Column {
    id: section

    required property metricCard card
    required property list<real> perCoreUsage
    required property real greenThreshold
    required property real yellowThreshold

    spacing: 4

    MetricCardView {
        objectName: "cpuCard"
        width: parent.width
        card: section.card
    }

    Column {
        objectName: "perCoreBlock"
        x: 12
        width: parent.width - 2 * 12
        spacing: 4
        visible: section.perCoreUsage.length > 0

        CaptionText {
            text: "Per-Core"
            font.weight: Font.Medium
        }

        CoreBarChart {
            objectName: "coreBars"
            width: parent.width
            perCoreUsage: section.perCoreUsage
            greenThreshold: section.greenThreshold
            yellowThreshold: section.yellowThreshold
            barHeight: 40
            green: Theme.green
            yellow: Theme.yellow
            red: Theme.red
            Accessible.role: Accessible.Chart
            Accessible.name: "Per-Core"
            Accessible.description: text
        }
    }
}
