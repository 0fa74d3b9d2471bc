import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// A row's label with a switch at its end. It requests the change and shows the actual state.
T.Switch {
    id: toggle

    required property bool isOn

    signal chosen(wish: bool)

    function ask(): void {
        toggle.chosen(!toggle.isOn)
        toggle.checked = toggle.isOn
    }

    implicitHeight: Math.max(implicitContentHeight, implicitIndicatorHeight)
    font.pixelSize: Theme.points(13)
    Accessible.name: toggle.text
    Accessible.onPressAction: toggle.ask()
    Accessible.onToggleAction: toggle.ask()
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) toggle.ask() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) toggle.ask() }
    Component.onCompleted: toggle.checked = toggle.isOn
    onIsOnChanged: toggle.checked = toggle.isOn
    onToggled: toggle.ask()

    contentItem: Text {
        text: toggle.text
        font: toggle.font
        color: Theme.primary
        wrapMode: Text.WordWrap
        leftPadding: toggle.mirrored ? toggle.implicitIndicatorWidth + 12 : 0
        rightPadding: toggle.mirrored ? 0 : toggle.implicitIndicatorWidth + 12
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Plate {
        anchors.right: toggle.right
        anchors.verticalCenter: toggle.verticalCenter
        implicitWidth: 36
        implicitHeight: 20
        radius: 10
        color: toggle.isOn ? Theme.accent : Theme.emptyTrack

        Plate {
            x: toggle.isOn !== toggle.mirrored ? parent.width - width - 2 : 2
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            radius: 8
            color: Theme.knob

            Behavior on x {
                enabled: !Appearance.reducesMotion

                NumberAnimation {
                    duration: 120
                    easing.type: Easing.OutCubic
                }
            }
        }
        FocusRing {
            visible: toggle.visualFocus
            innerRadius: 10
        }
    }
}
