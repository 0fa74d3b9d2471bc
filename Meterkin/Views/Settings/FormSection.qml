import QtQuick
import Meterkin.Views

// A titled group of rows.
Column {
    id: section

    property string title
    default property alias rows: group.data

    width: parent ? parent.width - 40 : 0
    spacing: 6
    Accessible.ignored: section.title === ""
    Accessible.role: Accessible.Grouping
    Accessible.name: section.title

    Text {
        width: section.width
        leftPadding: 12
        rightPadding: 12
        horizontalAlignment: Text.AlignLeft
        visible: section.title !== ""
        text: section.title
        font.pixelSize: Theme.points(12)
        font.weight: Font.DemiBold
        color: Theme.secondary
        Accessible.ignored: section.title === ""
        Accessible.role: Accessible.Heading
        Accessible.name: section.title
    }
    Plate {
        width: section.width
        height: group.height
        radius: 9
        color: Theme.card
        lineColor: Theme.cardLine

        Column {
            id: group
            width: section.width
        }
    }
}
