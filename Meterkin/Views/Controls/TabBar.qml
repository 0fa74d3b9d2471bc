import QtQuick
import Meterkin.Views

// Tabs side by side, one stop for the Tab key: the arrow keys walk from one to the next.
Row {
    id: bar

    required property int selected

    signal chosen(index: int)

    // Round from the last to the first. The keyboard goes along if it is here.
    function choose(step: int): void {
        const old = bar.children[bar.selected] as Item
        bar.chosen((bar.selected + step + bar.children.length) % bar.children.length)
        if (old.activeFocus)
            (bar.children[bar.selected] as Item).forceActiveFocus(Qt.TabFocusReason)
    }

    spacing: 4
    Accessible.role: Accessible.PageTabList
    Accessible.name: "Settings"
    Keys.onLeftPressed: bar.choose(-1)
    Keys.onRightPressed: bar.choose(1)

    TabButton {
        objectName: text
        text: "General"
        symbol: "gearshape"
        selected: bar.selected === 0
        onClicked: bar.chosen(0)
    }
    TabButton {
        objectName: text
        text: "Thresholds"
        symbol: "slider.horizontal.3"
        selected: bar.selected === 1
        onClicked: bar.chosen(1)
    }
    TabButton {
        objectName: text
        text: "Alerts"
        symbol: "bell"
        selected: bar.selected === 2
        onClicked: bar.chosen(2)
    }
    TabButton {
        objectName: text
        text: "About"
        symbol: "info.circle"
        selected: bar.selected === 3
        onClicked: bar.chosen(3)
    }
}
