import QtQuick
import Meterkin.Views

// Every preference, in tabs. What is changed is stored at once.
Rectangle {
    id: view

    required property SettingsViewModel settings
    required property int fanCount
    required property UpdaterController updaterController
    required property HotkeyRecorder recorder
    required property string version
    required property url projectLink
    property int selectedTab: 0

    // After the new interval was stored, in seconds.
    signal restartCollector(interval: real)
    // To be stored and applied by whoever can register the program.
    signal launchAtLoginChosen(wish: bool)
    signal checkForUpdates()

    implicitWidth: 470 * Appearance.textScale
    implicitHeight: 520
    color: Theme.windowBackground

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: view.Window.window.close()
    }
    TabBar {
        id: tabs
        y: 8
        anchors.horizontalCenter: view.horizontalCenter
        selected: view.selectedTab
        onChosen: index => view.selectedTab = index
    }
    Rectangle {
        id: line
        anchors.top: tabs.bottom
        anchors.topMargin: 8
        width: view.width
        height: 1
        color: Theme.separator
        Accessible.ignored: true
    }
    Item {
        id: pages
        anchors.top: line.bottom
        anchors.bottom: storageNote.top
        width: view.width

        GeneralSettings {
            anchors.fill: parent
            visible: view.selectedTab === 0
            settings: view.settings
            recorder: view.recorder
            onRestartCollector: interval => view.restartCollector(interval)
            onLaunchAtLoginChosen: wish => view.launchAtLoginChosen(wish)
        }
        ThresholdSettings {
            anchors.fill: parent
            visible: view.selectedTab === 1
            settings: view.settings
            fanCount: view.fanCount
        }
        AlertSettings {
            anchors.fill: parent
            visible: view.selectedTab === 2
            settings: view.settings
        }
        AboutTab {
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
