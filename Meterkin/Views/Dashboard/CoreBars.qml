import QtQuick
import Meterkin.Views

// A bar for each core.
Column {
    id: block

    required property list<real> perCoreUsage
    required property metricCard card

    spacing: 4

    CaptionText {
        anchors.left: parent.left
        text: qsTr("Per-Core")
        font.weight: Font.Medium
    }

    CoreBarChart {
        width: parent.width
        perCoreUsage: block.perCoreUsage
        greenThreshold: block.card.greenThreshold
        yellowThreshold: block.card.yellowThreshold
        barHeight: 40
        green: Theme.green
        yellow: Theme.yellow
        red: Theme.red
        track: Theme.card
        Accessible.role: Accessible.Chart
        Accessible.name: qsTr("Per-Core")
        Accessible.description: text
    }
}
