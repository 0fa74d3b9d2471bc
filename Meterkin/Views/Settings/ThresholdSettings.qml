import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property SettingsViewModel settings
    required property int fanCount

    FormSection {
        id: fans
        title: "Fan Speed"

        FormNote {
            visible: page.fanCount === 0
            text: "No fans found on this computer."
        }
        ThresholdRow {
            objectName: "fanSpeedGreen"
            label: "Green below:"
            section: fans.title
            metric: 0
            value: page.settings.fanSpeedGreen
            onChosen: value => page.settings.fanSpeedGreen = value
        }
        ThresholdRow {
            objectName: "fanSpeedYellow"
            label: "Yellow below:"
            section: fans.title
            metric: 0
            value: page.settings.fanSpeedYellow
            onChosen: value => page.settings.fanSpeedYellow = value
        }
    }
    FormSection {
        id: memory
        title: "Memory Usage"

        ThresholdRow {
            objectName: "memoryGreen"
            label: "Green below:"
            section: memory.title
            metric: 1
            value: page.settings.memoryGreen
            onChosen: value => page.settings.memoryGreen = value
        }
        ThresholdRow {
            objectName: "memoryYellow"
            label: "Yellow below:"
            section: memory.title
            metric: 1
            value: page.settings.memoryYellow
            onChosen: value => page.settings.memoryYellow = value
        }
    }
    FormSection {
        id: processor
        title: "CPU Usage"

        ThresholdRow {
            objectName: "cpuUsageGreen"
            label: "Green below:"
            section: processor.title
            metric: 2
            value: page.settings.cpuUsageGreen
            onChosen: value => page.settings.cpuUsageGreen = value
        }
        ThresholdRow {
            objectName: "cpuUsageYellow"
            label: "Yellow below:"
            section: processor.title
            metric: 2
            value: page.settings.cpuUsageYellow
            onChosen: value => page.settings.cpuUsageYellow = value
        }
    }
}
