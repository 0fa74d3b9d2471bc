import QtQuick
import Meterkin.Views

Item {
    id: screen

    required property string computerWord
    required property bool appeared
    required property bool iconLanded
    required property real iconProgress
    required property bool titleVisible
    required property bool bullet1Visible
    required property bool bullet2Visible
    required property bool bullet3Visible
    required property bool buttonVisible
    required property bool glowPulse
    required property bool takesFocus // not from where the user has moved it

    property real glowLevel: 0.55
    // Wrapped lines end early, so the block is centred by the width that they really use.
    readonly property real featuresLeft: Math.round(
        (bullet1.width - Math.max(bullet1.usedWidth, bullet2.usedWidth, bullet3.usedWidth)) / 2)

    signal pressed()

    opacity: appeared ? 1 : 0

    Behavior on opacity {
        OnboardingEase {
            span: 300
        }
    }
    SequentialAnimation {
        running: screen.glowPulse && screen.visible
        loops: Animation.Infinite

        OnboardingEase {
            easesIn: true
            target: screen
            property: "glowLevel"
            to: 1
            span: 2000
        }
        OnboardingEase {
            easesIn: true
            target: screen
            property: "glowLevel"
            to: 0.55
            span: 2000
        }
    }

    OnboardingBlock {
        height: button.y + button.height

        // One picture whose opacity changes: repainting it would cost time in each frame.
        OnboardingGlow {
            anchors.centerIn: icon
            width: Theme.points(200)
            height: width
            color: OnboardingColors.orange
            opacity: screen.glowLevel * Math.min(1, screen.iconProgress)
            visible: screen.iconLanded
        }
        SystemSymbol {
            id: icon

            anchors.horizontalCenter: parent.horizontalCenter
            name: "gauge.with.dots.needle.33percent"
            pointSize: Theme.points(48)
            color: OnboardingColors.orange
            opacity: Math.min(1, screen.iconProgress)
            scale: 0.4 + 0.6 * screen.iconProgress
            visible: screen.iconLanded
            Accessible.ignored: true
        }
        OnboardingReveal {
            id: title

            anchors.top: icon.bottom
            anchors.topMargin: Theme.points(14)
            anchors.horizontalCenter: parent.horizontalCenter
            shown: screen.titleVisible

            Text {
                text: qsTr("Welcome to meterkin")
                font.pixelSize: Theme.points(26)
                font.weight: Font.Bold
                color: OnboardingColors.primary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        OnboardingFeature {
            id: bullet1

            anchors.top: title.bottom
            anchors.topMargin: Theme.points(22)
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.horizontalCenterOffset: screen.featuresLeft
            width: parent.width
            shown: screen.bullet1Visible
            symbol: "memorychip"
            tint: OnboardingColors.blue
            text: qsTr("Monitor CPU usage, memory pressure, and fan speed at a glance.")
        }
        OnboardingFeature {
            id: bullet2

            anchors.top: bullet1.bottom
            anchors.topMargin: Theme.points(12)
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.horizontalCenterOffset: screen.featuresLeft
            width: parent.width
            shown: screen.bullet2Visible
            symbol: "gauge.with.dots.needle.bottom.50percent"
            tint: TierColors.of(ThresholdTier.Green, true)
            text: qsTr("Color-coded thresholds tell you when your %1 is working hard.").arg(screen.computerWord)
        }
        OnboardingFeature {
            id: bullet3

            anchors.top: bullet2.bottom
            anchors.topMargin: Theme.points(12)
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.horizontalCenterOffset: screen.featuresLeft
            width: parent.width
            shown: screen.bullet3Visible
            symbol: "bell.fill"
            tint: TierColors.of(ThresholdTier.Yellow, true)
            text: qsTr("Get alerts when system metrics cross your configured thresholds.")
        }
        OnboardingReveal {
            id: button

            anchors.top: bullet3.bottom
            anchors.topMargin: Theme.points(26)
            anchors.horizontalCenter: parent.horizontalCenter
            shown: screen.buttonVisible
            duration: 300

            OnboardingButton {
                isRevealed: screen.enabled && button.opacity === 1
                takesFocus: screen.takesFocus
                text: qsTr("Get Started")
                onClicked: screen.pressed()
            }
        }
    }
}
