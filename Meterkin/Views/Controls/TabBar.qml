import QtQuick
import Meterkin.Views

// Tabs side by side. The Tab key stops once; the arrow keys go from one to the next.
Row {
    id: bar

    required property int selected

    readonly property int count: 4
    readonly property int rightward: bar.effectiveLayoutDirection === Qt.RightToLeft ? -1 : 1
    readonly property Item current: bar.selected === 0 ? general as Item
        : bar.selected === 1 ? thresholds as Item : bar.selected === 2 ? alerts as Item : about as Item

    signal chosen(index: int)

    // Wraps around. The focus follows if it is in the bar.
    function choose(step: int): void {
        const hadFocus = bar.current.activeFocus
        bar.chosen((bar.selected + step + bar.count) % bar.count)
        if (hadFocus)
            bar.current.forceActiveFocus(Qt.TabFocusReason)
    }

    spacing: 4
    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Settings")
    Keys.onLeftPressed: bar.choose(-bar.rightward)
    Keys.onRightPressed: bar.choose(bar.rightward)

    TabButton {
        id: general
        text: qsTr("General")
        symbol: "gearshape"
        selected: bar.selected === 0
        onClicked: bar.chosen(0)
    }
    TabButton {
        id: thresholds
        text: qsTr("Thresholds")
        symbol: "slider.horizontal.3"
        selected: bar.selected === 1
        onClicked: bar.chosen(1)
    }
    TabButton {
        id: alerts
        text: qsTr("Alerts")
        symbol: "bell"
        selected: bar.selected === 2
        onClicked: bar.chosen(2)
    }
    TabButton {
        id: about
        text: qsTr("About")
        symbol: "info.circle"
        selected: bar.selected === 3
        onClicked: bar.chosen(3)
    }
}
