import QtQuick
import Meterkin.Views

// Every preference, in tabs. What is changed is stored at once.
FocusScope {
    id: view

    required property SettingsViewModel settings
    required property int fanCount
    required property UpdaterController updaterController
    required property HotkeyRecorder recorder
    required property string version
    required property url projectLink
    property int selectedTab: 0

    readonly property color color: Theme.windowBackground
    readonly property FormPage page: view.selectedTab === 0 ? general as FormPage
        : view.selectedTab === 1 ? thresholds as FormPage
        : view.selectedTab === 2 ? alerts as FormPage : about as FormPage

    // After the new interval, in seconds, was stored.
    signal restartCollector(interval: real)
    // Not stored yet.
    signal launchAtLoginChosen(wish: bool)
    signal checkForUpdates()

    LayoutMirroring.enabled: Appearance.mirrored
    LayoutMirroring.childrenInherit: true
    implicitWidth: 470 * Appearance.textScale
    implicitHeight: 520
    Keys.onPressed: event => event.accepted = view.page.scrollByKey(event.key)
    // A recording ends first; a key that is held down must not close the window after that.
    Keys.onEscapePressed: event => {
        if (view.recorder.isRecording)
            view.recorder.cancel()
        else if (!event.isAutoRepeat)
            view.Window.window.close()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: view.Window.window.close()
    }
    Shortcut {
        sequence: "Ctrl+Tab"
        onActivated: tabs.choose(1)
    }
    Shortcut {
        sequence: "Ctrl+Shift+Tab"
        onActivated: tabs.choose(-1)
    }
    Plate {
        anchors.fill: view
        color: view.color
    }
    TabBar {
        id: tabs
        y: 8
        anchors.horizontalCenter: view.horizontalCenter
        selected: view.selectedTab
        onChosen: index => view.selectedTab = index
    }
    Hairline {
        id: line
        anchors.top: tabs.bottom
        anchors.topMargin: 8
        width: view.width
    }
    Item {
        id: pages
        anchors.top: line.bottom
        anchors.bottom: storageNote.top
        width: view.width

        GeneralSettings {
            id: general
            anchors.fill: parent
            visible: view.selectedTab === 0
            settings: view.settings
            recorder: view.recorder
            onRestartCollector: interval => view.restartCollector(interval)
            onLaunchAtLoginChosen: wish => view.launchAtLoginChosen(wish)
        }
        ThresholdSettings {
            id: thresholds
            anchors.fill: parent
            visible: view.selectedTab === 1
            settings: view.settings
            fanCount: view.fanCount
        }
        AlertSettings {
            id: alerts
            anchors.fill: parent
            visible: view.selectedTab === 2
            settings: view.settings
        }
        AboutTab {
            id: about
            anchors.fill: parent
            visible: view.selectedTab === 3
            updaterController: view.updaterController
            version: view.version
            projectLink: view.projectLink
            onCheckForUpdates: view.checkForUpdates()
        }
    }
    StorageNote {
        id: storageNote
        anchors.bottom: view.bottom
        width: view.width
        problem: view.settings.storageProblem
    }
}
