import QtQuick
import Meterkin.Views

// The centred content of an onboarding screen, scaled down when it does not fit.
Item {
    id: block

    readonly property real least: Theme.points(12) // to the edges

    anchors.centerIn: parent
    width: Theme.points(380)
    scale: parent ? Math.min(1, (parent.width - 2 * block.least) / block.width,
                             (parent.height - 2 * block.least) / block.height) : 1
}
