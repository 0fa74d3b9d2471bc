import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// One of a stepper's two buttons. On the keyboard the arrow keys do the same.
T.AbstractButton {
    id: button

    required property string symbol

    implicitWidth: 20 * Appearance.textScale
    autoRepeat: true
    focusPolicy: Qt.NoFocus
    Accessible.ignored: true

    background: Plate {
        radius: 4
        color: Theme.fill(button.down, button.hovered)
    }
    contentItem: Item {
        SystemSymbol {
            anchors.centerIn: parent
            name: button.symbol
            pointSize: Theme.points(9)
            color: Theme.primary
        }
    }
}
