import QtQuick
import Meterkin.Views

// Tabs side by side; the arrow keys walk from one to the next.
Row {
    id: bar

    required property int selected

    signal chosen(index: int)

    spacing: 4
    Accessible.role: Accessible.PageTabList
    Accessible.name: "Settings"

    TabButton {
        id: general
        objectName: general.text
        text: "General"
        symbol: "gearshape"
        selected: bar.selected === 0
        KeyNavigation.right: thresholds
        onClicked: bar.chosen(0)
    }
    TabButton {
        id: thresholds
        objectName: thresholds.text
        text: "Thresholds"
        symbol: "slider.horizontal.3"
        selected: bar.selected === 1
        KeyNavigation.right: alerts
        onClicked: bar.chosen(1)
    }
    TabButton {
        id: alerts
        objectName: alerts.text
        text: "Alerts"
        symbol: "bell"
        selected: bar.selected === 2
        KeyNavigation.right: about
        onClicked: bar.chosen(2)
    }
    TabButton {
        id: about
        objectName: about.text
        text: "About"
        symbol: "info.circle"
        selected: bar.selected === 3
        onClicked: bar.chosen(3)
    }
}
