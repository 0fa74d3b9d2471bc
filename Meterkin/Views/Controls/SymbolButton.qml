import QtQuick
import Meterkin.Views

// A borderless button that shows only a symbol; its label is the tool tip and the accessible name.
// Not a template of Qt's: the dashboard needs no other, and they cost as much as all of it.
Item {
    id: button

    required property string symbol
    required property real pointSize
    required property string label

    readonly property int padding: 4
    readonly property bool isPressed: area.containsPress || button.isSpaceDown
    property bool isSpaceDown: false

    signal clicked()

    implicitWidth: picture.implicitWidth + 2 * button.padding
    implicitHeight: picture.implicitHeight + 2 * button.padding
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: button.label
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) button.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) button.clicked() }
    Keys.onSpacePressed: button.isSpaceDown = true
    Keys.onReleased: event => {
        if (event.key !== Qt.Key_Space || event.isAutoRepeat || !button.isSpaceDown)
            return
        button.isSpaceDown = false
        button.clicked()
    }
    onActiveFocusChanged: button.isSpaceDown = false

    Plate {
        anchors.fill: parent
        radius: 5
        color: Theme.faded(Theme.primary, button.isPressed ? 0.16 : area.containsMouse ? 0.08 : 0)

        FocusRing {
            visible: button.activeFocus
            innerRadius: 5
            distance: -2
        }
    }

    SystemSymbol {
        id: picture

        anchors.fill: parent
        anchors.margins: button.padding
        name: button.symbol
        pointSize: Theme.points(button.pointSize)
        color: area.containsMouse ? Theme.primary : Theme.secondary
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }

    HoverTip {
        text: button.label
        isWanted: area.containsMouse && !button.isPressed
    }
}
