import QtQuick
import Meterkin.Views

// Shown at the first launch: what the program does, then where to find it.
FocusScope {
    id: view

    required property string computerWord // what the system's users call their machine

    property bool systemTitleBar: false // true: the window's own frame can close it
    property bool rounded: true // false where nothing shows through beyond the corners

    property int currentScreen: 0
    property bool appeared: false
    property bool iconLanded: false
    property bool titleVisible: false
    property bool bullet1Visible: false
    property bool bullet2Visible: false
    property bool bullet3Visible: false
    property bool buttonVisible: false
    property bool glowPulse: false
    property real circleTrim: 0
    property real checkmarkTrim: 0
    property real glowOpacity: 0
    property bool headlineVisible: false
    property bool subtextVisible: false
    property bool previewVisible: false
    property bool button2Visible: false
    property real shimmerPhase: 0

    readonly property bool mayMove: sight.isSeen && !Appearance.reducesMotion
    readonly property int forward: view.LayoutMirroring.enabled ? -1 : 1
    readonly property real iconProgress: iconSpring.position
    property real turned: currentScreen // 0 to 1, from the first screen to the second
    property bool shimmers: false
    property bool started: false
    property bool finished: false

    signal getStarted()
    signal complete()
    signal closeRequested()

    // Call it when the view is first shown.
    function start(): void {
        if (started)
            return
        started = true
        welcomeTimetable.start()
    }

    function leaveWelcome(): void {
        if (currentScreen !== 0)
            return
        getStarted()
        currentScreen = 1
        doneTimetable.start()
    }

    function finish(): void {
        if (currentScreen !== 1 || finished)
            return
        finished = true
        complete()
    }

    LayoutMirroring.enabled: Appearance.mirrored
    LayoutMirroring.childrenInherit: true
    implicitWidth: 520 * Appearance.textScale
    implicitHeight: 420 * Appearance.textScale
    focus: true

    Keys.onEscapePressed: closeRequested()

    WindowSight {
        id: sight
    }

    Behavior on turned {
        OnboardingEase {
            easesIn: true
            span: 400
        }
    }
    Behavior on circleTrim {
        OnboardingEase {
            span: 400
        }
    }
    Behavior on checkmarkTrim {
        OnboardingEase {
            span: 300
        }
    }
    Behavior on glowOpacity {
        OnboardingEase {
            easesIn: true
            span: 1200
        }
    }

    OnboardingSpring {
        id: iconSpring

        released: view.iconLanded
        response: 0.6
        dampingFraction: 0.7
    }
    ParallelAnimation {
        id: welcomeTimetable

        OnboardingStep { delay: 0; onReached: view.appeared = true }
        OnboardingStep { delay: 200; onReached: view.iconLanded = true }
        OnboardingStep { delay: 500; onReached: view.titleVisible = true }
        OnboardingStep { delay: 700; onReached: view.bullet1Visible = true }
        OnboardingStep { delay: 850; onReached: view.bullet2Visible = true }
        OnboardingStep { delay: 1000; onReached: view.bullet3Visible = true }
        OnboardingStep { delay: 1200; onReached: view.buttonVisible = true }
        OnboardingStep { delay: 1300; onReached: view.glowPulse = true }
    }
    ParallelAnimation {
        id: doneTimetable

        OnboardingStep { delay: 500; onReached: view.circleTrim = 1 }
        OnboardingStep { delay: 900; onReached: view.checkmarkTrim = 1 }
        OnboardingStep { delay: 1200; onReached: view.glowOpacity = 1 }
        OnboardingStep { delay: 1300; onReached: view.headlineVisible = true }
        OnboardingStep { delay: 1500; onReached: view.subtextVisible = true }
        OnboardingStep { delay: 1700; onReached: view.previewVisible = true }
        OnboardingStep { delay: 2100; onReached: view.button2Visible = true }
        OnboardingStep { delay: 2300; onReached: { view.shimmerPhase = 1; view.shimmers = true } }
    }
    NumberAnimation {
        running: view.shimmers && view.mayMove
        target: view
        property: "shimmerPhase"
        from: 0
        to: 1
        duration: 2000
        loops: Animation.Infinite
        onStopped: view.shimmerPhase = 1
    }

    Plate {
        anchors.fill: parent
        radius: view.rounded ? 20 : 0
        color: OnboardingColors.background
        lineColor: OnboardingColors.border
    }
    Item {
        anchors.fill: parent
        opacity: 1 - view.turned
        visible: view.turned < 1
        enabled: view.currentScreen === 0
        transform: Translate {
            x: -view.forward * Math.round(view.turned * Theme.points(24))
        }

        OnboardingWelcome {
            anchors.fill: parent
            computerWord: view.computerWord
            appeared: view.appeared
            iconLanded: view.iconLanded
            iconProgress: view.iconProgress
            titleVisible: view.titleVisible
            bullet1Visible: view.bullet1Visible
            bullet2Visible: view.bullet2Visible
            bullet3Visible: view.bullet3Visible
            buttonVisible: view.buttonVisible
            glowPulse: view.glowPulse && view.mayMove
            takesFocus: !closeButton.activeFocus
            onPressed: view.leaveWelcome()
        }
    }
    Item {
        anchors.fill: parent
        opacity: view.turned
        visible: view.turned > 0
        enabled: view.currentScreen === 1
        transform: Translate {
            x: view.forward * Math.round((1 - view.turned) * Theme.points(24))
        }

        OnboardingDone {
            anchors.fill: parent
            circleTrim: view.circleTrim
            checkmarkTrim: view.checkmarkTrim
            glowOpacity: view.glowOpacity
            headlineVisible: view.headlineVisible
            subtextVisible: view.subtextVisible
            previewVisible: view.previewVisible
            button2Visible: view.button2Visible
            shimmerPhase: view.shimmerPhase
            takesFocus: !closeButton.activeFocus
            onPressed: view.finish()
        }
    }
    OnboardingCloseButton {
        id: closeButton

        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: Theme.points(12)
        visible: !view.systemTitleBar
        onClicked: view.closeRequested()
    }
}
