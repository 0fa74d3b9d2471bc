import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

T.AbstractButton {
    id: button

    property real shimmerPhase: 0

    leftPadding: Theme.points(26)
    rightPadding: Theme.points(24)
    topPadding: Theme.points(11)
    bottomPadding: Theme.points(11)
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: button.clicked()

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
            name: "arrow.right"
            pointSize: Theme.points(13)
            color: OnboardingColors.accentText
            Accessible.ignored: true
        }
    }
    background: Rectangle {
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
            border.color: OnboardingColors.focusRing
            visible: button.visualFocus
        }
    }
}
