import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// A narrow scroll bar over the content, visible when there is something to scroll.
T.ScrollBar {
    id: bar

    implicitWidth: 8
    padding: 2
    visible: size < 1.0
    policy: T.ScrollBar.AsNeeded
    minimumSize: 0.1
    hoverEnabled: true
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 4
        radius: 2
        color: Theme.faded(Theme.primary, bar.pressed ? 0.6 : bar.hovered ? 0.45 : 0.3)
    }
}
