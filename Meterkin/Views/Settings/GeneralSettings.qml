import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property SettingsViewModel settings
    required property HotkeyRecorder recorder

    signal restartCollector(interval: real)
    signal launchAtLoginChosen(wish: bool)

    // -1 for an interval that cannot be chosen here.
    function choiceOf(interval: real): int {
        return interval === 1.0 ? 0 : interval === 3.0 ? 1 : interval === 5.0 ? 2
            : interval === 10.0 ? 3 : -1
    }
    function chooseInterval(choice: int): void {
        const interval = choice === 0 ? 1.0 : choice === 1 ? 3.0 : choice === 2 ? 5.0 : 10.0
        page.settings.updateInterval = interval
        page.restartCollector(interval)
    }

    FormSection {
        title: qsTr("Menu Bar Display")

        FormRow {
            id: metricRow
            label: qsTr("Show in menu bar:")

            Picker {
                anchors.right: parent.right
                name: metricRow.label
                model: Metrics.titles
                currentIndex: page.settings.menuBarMetric
                onActivated: index => page.settings.menuBarMetric = index
            }
        }
    }
    FormSection {
        title: qsTr("Update Interval")

        FormRow {
            id: intervalRow
            label: qsTr("Read metrics every:")

            Picker {
                anchors.right: parent.right
                name: intervalRow.label
                model: [qsTr("1 second"), qsTr("3 seconds"), qsTr("5 seconds"), qsTr("10 seconds")]
                currentIndex: page.choiceOf(page.settings.intervalInEffect)
                displayText: currentIndex < 0
                    ? qsTr("%1 seconds").arg(Number(page.settings.intervalInEffect.toFixed(2))) : currentText
                onActivated: index => page.chooseInterval(index)
            }
        }
    }
    FormSection {
        title: qsTr("Global Hotkey")

        ToggleRow {
            text: qsTr("Enable global hotkey")
            isOn: page.settings.hotkeyEnabled
            onChosen: wish => page.settings.hotkeyEnabled = wish
        }
        HotkeyRecorderRow {
            recorder: page.recorder
        }
        FormRemark {
            text: page.recorder.remark
        }
    }
    FormSection {
        title: qsTr("System")

        ToggleRow {
            text: qsTr("Launch at login")
            isOn: page.settings.launchAtLogin
            onChosen: wish => page.launchAtLoginChosen(wish)
        }
    }
}
