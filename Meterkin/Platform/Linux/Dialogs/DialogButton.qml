import QtQuick
import Meterkin.Views

// One of a dialog's buttons. The default one stands out, and Return presses it from anywhere.
PushButton {
    id: button

    property bool isDefault: false

    implicitWidth: Math.max(84 * Appearance.textScale, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: 16
    rightPadding: 16
    topPadding: 5
    bottomPadding: 5
    textColor: button.isDefault ? Theme.textOnAccent : Theme.primary
    Accessible.defaultButton: button.isDefault

    background: Rectangle {
        radius: 6
        color: button.isDefault
            ? (button.down ? Qt.darker(Theme.accent, 1.2)
                : button.hovered ? Qt.darker(Theme.accent, 1.1) : Theme.accent)
            : Theme.faded(Theme.separator, button.down ? 0.6 : button.hovered ? 0.45 : 0.3)
        border.width: button.isDefault ? 0 : 1
        border.color: Theme.separator

        FocusRing {
            visible: button.visualFocus
        }
    }
}
