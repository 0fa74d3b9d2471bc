pragma ComponentBehavior: Bound

import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property SettingsViewModel settings
    required property int fanCount

    Repeater {
        model: Metrics.all

        ThresholdSection {
            required property int modelData

            metric: modelData
            settings: page.settings.of(modelData)
            note: modelData === SystemMetric.FanSpeed && page.fanCount === 0
                ? qsTr("No fans found on this computer.") : ""
        }
    }
}
