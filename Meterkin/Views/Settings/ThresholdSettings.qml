import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property SettingsViewModel settings
    required property int fanCount

    ThresholdSection {
        title: "Fan Speed"
        name: "fanSpeed"
        metric: 0
        note: page.fanCount === 0 ? "No fans found on this computer." : ""
        green: page.settings.fanSpeedGreen
        yellow: page.settings.fanSpeedYellow
        onGreenChosen: value => page.settings.fanSpeedGreen = value
        onYellowChosen: value => page.settings.fanSpeedYellow = value
    }
    ThresholdSection {
        title: "Memory Usage"
        name: "memory"
        metric: 1
        green: page.settings.memoryGreen
        yellow: page.settings.memoryYellow
        onGreenChosen: value => page.settings.memoryGreen = value
        onYellowChosen: value => page.settings.memoryYellow = value
    }
    ThresholdSection {
        title: "CPU Usage"
        name: "cpuUsage"
        metric: 2
        green: page.settings.cpuUsageGreen
        yellow: page.settings.cpuUsageYellow
        onGreenChosen: value => page.settings.cpuUsageGreen = value
        onYellowChosen: value => page.settings.cpuUsageYellow = value
    }
}
