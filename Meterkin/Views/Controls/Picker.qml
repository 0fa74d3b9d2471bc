pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// A combo box of texts.
T.ComboBox {
    id: picker

    required property string name

    readonly property bool isInSight: picker.Window.visibility !== Window.Hidden

    function opens(): bool {
        if (picker.popup.visible)
            return false
        picker.popup.open()
        return true
    }

    // The same width for all pickers unless a text is too long.
    implicitWidth: Math.max(140 * Appearance.textScale, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: picker.mirrored ? 30 : 12
    rightPadding: picker.mirrored ? 12 : 30
    topPadding: 4
    bottomPadding: 4
    font.pixelSize: Theme.points(13)
    Accessible.name: picker.name
    // With an open list the highlighted entry: the focus stays here.
    Accessible.description: picker.popup.visible && picker.highlightedIndex >= 0
        ? picker.textAt(picker.highlightedIndex) : picker.displayText
    Accessible.onPressAction: picker.popup.open()
    // Also when the program ends, see the delegate.
    onIsInSightChanged: picker.popup.close()
    // An open list handles these keys itself.
    Keys.onReturnPressed: event => event.accepted = picker.opens()
    Keys.onEnterPressed: event => event.accepted = picker.opens()

    contentItem: Text {
        text: picker.displayText
        font: picker.font
        color: Theme.primary
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Item {
        x: picker.mirrored ? 10 : picker.width - width - 10
        y: (picker.height - height) / 2
        width: Theme.points(10)
        height: Theme.points(17)
        Accessible.ignored: true

        SystemSymbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "chevron.up"
            pointSize: Theme.points(8)
            color: Theme.secondary
        }
        SystemSymbol {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            name: "chevron.down"
            pointSize: Theme.points(8)
            color: Theme.secondary
        }
    }
    background: Plate {
        radius: 6
        color: Theme.fill(picker.down, picker.hovered)

        FocusRing {
            visible: picker.visualFocus
        }
    }
    delegate: T.ItemDelegate {
        id: choice

        required property string modelData
        required property int index

        readonly property bool isChosen: picker.currentIndex === choice.index

        width: picker.popup.availableWidth
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        leftPadding: choice.mirrored ? 12 : 12 + Theme.points(15)
        rightPadding: choice.mirrored ? 12 + Theme.points(15) : 12
        topPadding: 5
        bottomPadding: 5
        text: choice.modelData
        font.pixelSize: Theme.points(13)
        highlighted: picker.highlightedIndex === choice.index
        // Ignored while the list is closed: else Qt would notify screen readers from within the
        // destructor and crash.
        Accessible.ignored: !picker.popup.visible
        Accessible.name: choice.text
        Accessible.selectable: true
        Accessible.selected: choice.isChosen
        Accessible.onPressAction: choice.clicked()

        contentItem: Text {
            text: choice.text
            font: choice.font
            color: choice.highlighted ? Theme.textOnAccent : Theme.primary
            horizontalAlignment: Text.AlignLeft
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        background: Plate {
            radius: 5
            color: choice.highlighted ? Theme.accent : "transparent"

            SystemSymbol {
                anchors.left: parent.left
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                visible: choice.isChosen
                name: "checkmark"
                pointSize: Theme.points(11)
                color: choice.highlighted ? Theme.textOnAccent : Theme.primary
                Accessible.ignored: true
            }
        }
    }
    popup: T.Popup {
        y: picker.height + 4
        x: picker.mirrored ? 0 : picker.width - width
        width: picker.width + 14
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        margins: 8
        padding: 5

        contentItem: ListView {
            // It is no child of the window's content.
            LayoutMirroring.enabled: picker.mirrored
            LayoutMirroring.childrenInherit: true
            implicitHeight: contentHeight
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
            Accessible.role: Accessible.List
            Accessible.name: picker.name
            // The popup's own frame needs a name, too.
            onParentChanged: {
                if (parent)
                    parent.Accessible.name = picker.name
            }
        }
        background: Plate {
            radius: 9
            color: Theme.controlBackground
            lineColor: Theme.faded(Theme.primary, 0.2)
        }
    }
}
