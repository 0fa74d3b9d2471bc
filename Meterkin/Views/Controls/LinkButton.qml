import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

T.AbstractButton {
    id: link

    implicitWidth: implicitContentWidth + 8
    implicitHeight: implicitContentHeight + 4
    font.pixelSize: Theme.points(13)
    font.underline: link.hovered
    Accessible.name: link.text
    Accessible.onPressAction: link.clicked()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) link.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) link.clicked() }

    contentItem: Text {
        text: link.text
        font: link.font
        color: Theme.highlight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Item {
        FocusRing {
            visible: link.visualFocus
            distance: 0
        }
    }
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
