pragma ComponentBehavior: Bound

import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property SettingsViewModel settings

    FormSection {
        title: qsTr("Threshold Alerts")

        FormNote {
            text: qsTr("Get notified when a metric enters the red zone. One alert per crossing with a 10-minute cooldown.")
        }
        Repeater {
            model: Metrics.all

            ToggleRow {
                required property int modelData
                readonly property MetricSettings settings: page.settings.of(modelData)

                text: settings.name
                isOn: settings.isAlertOn
                onChosen: wish => settings.isAlertOn = wish
            }
        }
    }
}
