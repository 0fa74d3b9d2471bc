pragma ComponentBehavior: Bound

import QtQuick
import Meterkin.Views

// The popover's content: the program's name, a card for each metric, and two buttons.
FocusScope {
    id: view

    required property DashboardViewModel viewModel
    required property SettingsViewModel settings

    // For the frame that holds it.
    readonly property color background: Theme.windowBackground
    readonly property color border: Theme.separator

    readonly property int fixedWidth: 320
    readonly property int contentPadding: 10
    readonly property int cardSpacing: 8

    readonly property bool isShown: view.Window.visibility !== Window.Hidden

    signal openSettings()
    signal quit()
    signal closeRequested()

    LayoutMirroring.enabled: Appearance.mirrored
    LayoutMirroring.childrenInherit: true
    implicitWidth: fixedWidth * Appearance.textScale
    implicitHeight: header.height + upperDivider.height + cards.implicitHeight + 2 * contentPadding
                    + lowerDivider.height + footer.height

    // A screen may be too low for what does not scroll.
    clip: height < implicitHeight
    Keys.onEscapePressed: view.closeRequested()

    // Opened again, it begins at the top, without focus on the button that was pressed last.
    onIsShownChanged: {
        scrollArea.focus = true
        scrollArea.contentY = 0
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "meterkin"

    DashboardReadings {
        id: readings

        viewModel: view.viewModel
        settings: view.settings
        active: view.isShown
    }

    Item {
        id: header

        width: parent.width
        height: name.implicitHeight + 2 * 10

        Row {
            anchors.left: parent.left
            anchors.leftMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            SystemSymbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "gauge.with.dots.needle.33percent"
                pointSize: Theme.points(13)
                isSemibold: true
                color: Theme.orange
            }

            Text {
                id: name

                text: "meterkin"
                color: Theme.primary
                font.pixelSize: Theme.points(13)
                font.weight: Font.Bold
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }

    Hairline {
        id: upperDivider

        anchors.top: header.bottom
        width: parent.width
    }

    Flickable {
        id: scrollArea

        objectName: "scrollArea"
        anchors.top: upperDivider.bottom
        anchors.bottom: lowerDivider.top
        width: parent.width
        contentHeight: cards.implicitHeight + 2 * view.contentPadding
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true
        focus: true

        Keys.onUpPressed: bar.moveTo(scrollArea.contentY - scrollArea.contentHeight / 10)
        Keys.onDownPressed: bar.moveTo(scrollArea.contentY + scrollArea.contentHeight / 10)

        ScrollIndicator {
            id: bar

            parent: scrollArea // not its content
            contentHeight: scrollArea.contentHeight
            contentY: scrollArea.contentY
            onMoved: contentY => scrollArea.contentY = contentY
        }

        Column {
            id: cards

            x: view.contentPadding
            y: view.contentPadding
            width: parent.width - 2 * view.contentPadding
            spacing: view.cardSpacing

            Repeater {
                model: readings

                MetricSection {
                    width: cards.width
                }
            }
        }
    }

    Hairline {
        id: lowerDivider

        anchors.bottom: footer.top
        width: parent.width
    }

    Item {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width
        height: settingsButton.implicitHeight - 2 * settingsButton.padding + 2 * 8

        SymbolButton {
            id: settingsButton

            anchors.left: parent.left
            anchors.leftMargin: 14 - padding
            anchors.verticalCenter: parent.verticalCenter
            symbol: "gearshape"
            pointSize: 12
            label: qsTr("Open Settings")
            onClicked: view.openSettings()
        }

        SymbolButton {
            anchors.right: parent.right
            anchors.rightMargin: 14 - padding
            anchors.verticalCenter: parent.verticalCenter
            symbol: "power"
            pointSize: 11
            label: qsTr("Quit meterkin")
            onClicked: view.quit()
        }
    }
}
