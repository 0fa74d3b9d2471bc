import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

T.Button {
    id: button

    property bool isDefault: false // stands out among its neighbours
    property color textColor: button.isDefault ? Theme.textOnAccent : Theme.primary

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 12
    rightPadding: 12
    topPadding: 4
    bottomPadding: 4
    font.pixelSize: Theme.points(13)
    // The only ways to tell screen readers that it is disabled.
    activeFocusOnTab: button.enabled
    Accessible.focusable: button.enabled
    Accessible.name: button.text
    Accessible.defaultButton: button.isDefault
    Accessible.onPressAction: {
        if (button.enabled)
            button.clicked()
    }
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) button.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) button.clicked() }

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.enabled ? button.textColor : Theme.secondary
        opacity: button.enabled ? 1.0 : 0.6
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Plate {
        radius: 6
        color: button.isDefault
            ? (button.down ? Qt.darker(Theme.accent, 1.2)
                : button.hovered ? Qt.darker(Theme.accent, 1.1) : Theme.accent)
            : Theme.fill(button.down, button.hovered)

        FocusRing {
            visible: button.visualFocus
        }
    }
}
