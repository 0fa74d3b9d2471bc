import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

T.AbstractButton {
    id: button

    implicitWidth: Theme.points(28)
    implicitHeight: implicitWidth
    hoverEnabled: true
    Accessible.name: qsTr("Close")
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) button.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) button.clicked() }

    contentItem: Item {
        SystemSymbol {
            anchors.centerIn: parent
            name: "xmark"
            pointSize: Theme.points(11)
            color: button.hovered ? OnboardingColors.primary : OnboardingColors.secondary
            Accessible.ignored: true
        }
    }
    background: Plate {
        radius: height / 2
        color: button.down ? OnboardingColors.border
            : button.hovered ? OnboardingColors.strip : "transparent"

        FocusRing {
            innerRadius: button.height / 2
            distance: -2
            lineColor: OnboardingColors.focusRing
            visible: button.visualFocus
        }
    }
}
