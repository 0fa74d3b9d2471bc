import QtQuick
import Meterkin.Views

Item {
    id: screen

    required property real circleTrim
    required property real checkmarkTrim
    required property real glowOpacity
    required property bool headlineVisible
    required property bool subtextVisible
    required property bool previewVisible
    required property bool button2Visible
    required property real shimmerPhase
    required property bool takesFocus // not from where the user has moved it

    signal pressed()

    OnboardingBlock {
        height: button.y + button.height

        OnboardingGlow {
            anchors.centerIn: checkmark
            width: Theme.points(220)
            height: width
            color: TierColors.of(ThresholdTier.Green, true)
            opacity: screen.glowOpacity
        }
        OnboardingCheckmarkShape {
            id: checkmark

            anchors.horizontalCenter: parent.horizontalCenter
            width: Theme.points(84)
            height: width
            circleTrim: screen.circleTrim
            checkmarkTrim: screen.checkmarkTrim
            color: TierColors.of(ThresholdTier.Green, true)
        }
        OnboardingReveal {
            id: headline

            anchors.top: checkmark.bottom
            anchors.topMargin: Theme.points(22)
            anchors.horizontalCenter: parent.horizontalCenter
            shown: screen.headlineVisible

            Text {
                text: qsTr("You're all set.")
                font.pixelSize: Theme.points(28)
                font.weight: Font.Bold
                color: OnboardingColors.primary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        OnboardingReveal {
            id: subtext

            anchors.top: headline.bottom
            anchors.topMargin: Theme.points(8)
            anchors.horizontalCenter: parent.horizontalCenter
            shown: screen.subtextVisible

            Text {
                text: qsTr("Look for the system stats in your menu bar.")
                font.pixelSize: Theme.points(14)
                color: OnboardingColors.secondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        OnboardingReveal {
            id: preview

            anchors.top: subtext.bottom
            anchors.topMargin: Theme.points(24)
            anchors.horizontalCenter: parent.horizontalCenter
            shown: screen.previewVisible

            Plate {
                width: readings.width + 2 * Theme.points(18)
                height: readings.height + 2 * Theme.points(8)
                radius: Theme.points(9)
                color: OnboardingColors.strip
                lineColor: OnboardingColors.border

                // In the colours of the default thresholds: 42% is green, the fan is beyond its
                // first threshold, so both show what the colours mean.
                Row {
                    id: readings

                    anchors.centerIn: parent
                    spacing: Theme.points(20)

                    OnboardingReading {
                        symbol: "memorychip"
                        text: "42%"
                        color: TierColors.of(ThresholdTier.Green, true)
                    }
                    OnboardingReading {
                        symbol: "fan.fill"
                        text: "3200 RPM"
                        color: TierColors.of(ThresholdTier.Yellow, true)
                    }
                }
            }
        }
        OnboardingReveal {
            id: button

            anchors.top: preview.bottom
            anchors.topMargin: Theme.points(30)
            anchors.horizontalCenter: parent.horizontalCenter
            shown: screen.button2Visible
            duration: 300
            easesIn: true

            OnboardingButton {
                isRevealed: screen.enabled && button.opacity === 1
                takesFocus: screen.takesFocus
                text: qsTr("Start Using meterkin")
                shimmerPhase: screen.shimmerPhase
                onClicked: screen.pressed()
            }
        }
    }
}
