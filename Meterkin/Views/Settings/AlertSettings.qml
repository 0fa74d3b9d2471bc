import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property SettingsViewModel settings

    FormSection {
        title: "Threshold Alerts"

        FormNote {
            text: "Get notified when a metric enters the red zone. One alert per crossing with a 10-minute cooldown."
        }
        ToggleRow {
            objectName: "alertFanSpeed"
            text: "Fan Speed"
            isOn: page.settings.alertFanSpeed
            onChosen: wish => page.settings.alertFanSpeed = wish
        }
        ToggleRow {
            objectName: "alertMemory"
            text: "Memory Usage"
            isOn: page.settings.alertMemory
            onChosen: wish => page.settings.alertMemory = wish
        }
        ToggleRow {
            objectName: "alertCPUUsage"
            text: "CPU Usage"
            isOn: page.settings.alertCPUUsage
            onChosen: wish => page.settings.alertCPUUsage = wish
        }
    }
}
