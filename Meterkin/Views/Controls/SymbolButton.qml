import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// A borderless button that shows only a symbol; its label is the tool tip and the accessible name.
T.Button {
    id: button

    required property string symbol
    required property real pointSize
    required property string label

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 4
    hoverEnabled: true
    focusPolicy: Qt.TabFocus

    Accessible.name: label
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) button.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) button.clicked() }

    HoverTip {
        text: button.label
        visible: button.hovered && !button.pressed
    }

    background: Rectangle {
        radius: 5
        color: Theme.faded(Theme.primary, button.pressed ? 0.16 : button.hovered ? 0.08 : 0)

        FocusRing {
            visible: button.visualFocus
            innerRadius: 5
            distance: -2
        }
    }

    contentItem: SystemSymbol {
        name: button.symbol
        pointSize: Theme.points(button.pointSize)
        color: button.hovered ? Theme.primary : Theme.secondary
    }
}
