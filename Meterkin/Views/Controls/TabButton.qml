import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// One tab: its symbol above its title.
T.TabButton {
    id: button

    required property string symbol
    required property bool selected

    readonly property color shade: button.selected ? Theme.highlight : Theme.secondary

    checked: button.selected
    activeFocusOnTab: button.selected || button.activeFocus
    implicitWidth: Math.max(84 * Appearance.textScale, implicitContentWidth + 20)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    topPadding: 6
    bottomPadding: 5
    font.pixelSize: Theme.points(11)
    Accessible.name: button.text
    Accessible.selectable: true
    Accessible.selected: button.selected
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) button.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) button.clicked() }

    contentItem: Column {
        spacing: 2

        SystemSymbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: button.symbol
            pointSize: Theme.points(18)
            color: button.shade
            Accessible.ignored: true
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: button.text
            font: button.font
            color: button.shade
            Accessible.ignored: true
        }
    }
    background: Plate {
        radius: 7
        lineColor: button.selected ? Theme.cardLine : "transparent"
        color: button.selected ? Theme.card
            : button.hovered ? Theme.faded(Theme.primary, 0.04) : "transparent"

        FocusRing {
            visible: button.visualFocus
            distance: -2
        }
    }
}
