import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

T.AbstractButton {
    id: button

    required property bool isRevealed // it can be seen wholly
    required property bool takesFocus // as soon as keys press it

    property real shimmerPhase: 0
    property bool takesKeys: false

    leftPadding: Theme.points(button.mirrored ? 24 : 26)
    rightPadding: Theme.points(button.mirrored ? 26 : 24)
    topPadding: Theme.points(11)
    bottomPadding: Theme.points(11)
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: button.clicked()
    // A key that is held down must not rush through both screens.
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
            || event.key === Qt.Key_Space
        if (event.accepted && button.takesKeys && !event.isAutoRepeat)
            button.clicked()
    }
    // A release would press the button although its key went down elsewhere or too early.
    Keys.onReleased: event => event.accepted = event.key === Qt.Key_Space

    // Keys typed for another window while this one appears must not press it.
    OnboardingStep {
        running: button.isRevealed
        delay: 400
        onReached: {
            button.takesKeys = true
            if (button.takesFocus)
                button.forceActiveFocus(Qt.OtherFocusReason)
        }
    }

    contentItem: Row {
        spacing: Theme.points(8)

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            font.pixelSize: Theme.points(14)
            font.weight: Font.DemiBold
            color: OnboardingColors.accentText
            Accessible.ignored: true
        }
        SystemSymbol {
            anchors.verticalCenter: parent.verticalCenter
            name: button.mirrored ? "arrow.left" : "arrow.right"
            pointSize: Theme.points(13)
            color: OnboardingColors.accentText
            Accessible.ignored: true
        }
    }
    background: Plate {
        radius: height / 2
        color: button.down ? OnboardingColors.accentPressed
            : button.hovered ? OnboardingColors.accentHovered : OnboardingColors.accent

        OnboardingShimmer {
            anchors.fill: parent
            phase: button.shimmerPhase
            visible: button.shimmerPhase > 0
        }
        FocusRing {
            innerRadius: button.height / 2
            lineColor: OnboardingColors.focusRing
            visible: button.visualFocus
        }
    }
}
