pragma ComponentBehavior: Bound

import QtQuick
import Meterkin.Views

// A metric's card and, below it, the metric's details if it has any.
Column {
    id: section

    required property metricCard card
    required property list<string> breakdown
    required property list<real> perCoreUsage
    required property list<fanRow> fans

    visible: section.card.isPresent
    spacing: section.perCoreUsage.length > 0 ? 4 : 8

    MetricCardView {
        width: section.width
        card: section.card
    }

    Flow {
        x: 12
        width: section.width - 2 * 12
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

    CoreBars {
        x: 12
        width: section.width - 2 * 12
        visible: perCoreUsage.length > 0
        perCoreUsage: section.perCoreUsage
        card: section.card
    }

    Repeater {
        model: section.fans

        FanRowView {
            anchors.left: section.left
            anchors.leftMargin: 12
        }
    }
}
