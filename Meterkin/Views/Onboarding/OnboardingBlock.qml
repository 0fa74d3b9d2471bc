import QtQuick
import Meterkin.Views

// What a screen of the onboarding shows, in its middle: smaller where it lacks the room.
Item {
    id: block

    readonly property real least: Theme.points(12) // to the edges

    anchors.centerIn: parent
    width: Theme.points(380)
    scale: parent ? Math.min(1, (parent.width - 2 * block.least) / block.width,
                             (parent.height - 2 * block.least) / block.height) : 1
}
