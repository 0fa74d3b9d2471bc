import QtQuick
import Meterkin.Views

// One metric: title, value in the colour of its tier, history and extremes.
Item {
    id: view

    required property metricCard card

    readonly property int cornerRadius: 8
    readonly property int sidePadding: 12
    readonly property int edgePadding: 10
    readonly property int spacing: 8
    readonly property color tierColor: Theme.tierColor(card.tier)

    implicitHeight: content.implicitHeight + 2 * edgePadding

    Accessible.role: Accessible.StaticText
    Accessible.name: card.title + ", " + card.value
    Accessible.description: card.hasExtremes ? card.highText + ", " + card.lowText : ""

    Plate {
        anchors.fill: parent
        radius: view.cornerRadius
        color: Theme.card
        lineColor: Theme.cardLine
    }

    Column {
        id: content

        x: view.sidePadding
        y: view.edgePadding
        width: parent.width - 2 * view.sidePadding
        spacing: view.spacing

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: view.card.title
            color: Theme.secondary
            font.pixelSize: Theme.points(11)
            font.weight: Font.Medium
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: view.card.value
            color: view.tierColor
            font.pixelSize: Theme.points(18)
            font.weight: Font.Bold
            // The text for a terabyte of memory is too wide.
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            Accessible.ignored: true
        }

        // Runs from left to right in every language, as the graphs of other monitors do.
        SparklineView {
            width: parent.width
            height: 30
            visible: view.card.hasSparkline
            data: view.card.sparklineData
            lineColor: view.tierColor
        }

        Row {
            anchors.left: parent.left
            visible: view.card.hasExtremes
            spacing: 12

            IconLabel {
                symbol: "arrow.up"
                text: view.card.highText
            }

            IconLabel {
                symbol: "arrow.down"
                text: view.card.lowText
            }
        }
    }
}
