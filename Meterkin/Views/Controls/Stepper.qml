import QtQuick
import Meterkin.Views

// A threshold that can be typed or moved by steps. A value outside the bounds stays as it is until
// the user changes it.
Item {
    id: stepper

    required property string name
    required property int metric
    required property real value

    readonly property string valueText: ThresholdEntry.text(stepper.metric, stepper.value)
    readonly property real fieldWidth: 92
    readonly property bool isInSight: stepper.Window.visibility !== Window.Hidden

    signal chosen(value: real)

    function choose(wish: real): void {
        if (wish !== stepper.value)
            stepper.chosen(wish)
        field.text = stepper.valueText
        if (field.activeFocus)
            field.selectAll()
    }
    function typedValue(): real {
        // Untouched, the text may be less exact than the value.
        return field.text === stepper.valueText
            ? stepper.value : ThresholdEntry.entered(stepper.metric, field.text, stepper.value)
    }
    function commit(): void {
        if (field.text !== stepper.valueText)
            stepper.choose(stepper.typedValue())
    }
    function step(steps: int): void {
        stepper.choose(ThresholdEntry.stepped(stepper.metric, stepper.typedValue(), steps))
    }

    function chooseNumber(wish: real): void {
        // A difference to NaN is never above 0: a threshold that is NaN is left alone.
        if (Math.abs(wish - stepper.value) > 0)
            stepper.choose(ThresholdEntry.entered(stepper.metric, ThresholdEntry.text(stepper.metric, wish), stepper.value))
        if (Math.abs(field.value - stepper.value) > 0)
            field.value = stepper.value
    }

    implicitWidth: stepper.fieldWidth * Appearance.textScale + 4 + buttons.width
    implicitHeight: field.implicitHeight
    // A window that is closed keeps its focus item, so editing does not end by itself.
    onIsInSightChanged: stepper.commit()
    onValueChanged: field.value = stepper.value
    onValueTextChanged: field.text = stepper.valueText

    WheelHandler {
        property int turned: 0

        id: wheel
        enabled: field.activeFocus
        onWheel: event => {
            wheel.turned += event.angleDelta.y
            const steps = wheel.turned > 0 ? Math.floor(wheel.turned / 120) : Math.ceil(wheel.turned / 120)
            wheel.turned -= steps * 120
            if (steps !== 0)
                stepper.step(steps)
        }
    }
    Plate {
        anchors.fill: field
        radius: 6
        color: Theme.well
        lineColor: Theme.faded(Theme.primary, 0.2)

        FocusRing {
            visible: field.activeFocus
            distance: -1
        }
    }
    TextInput {
        id: field

        // Screen readers look for these names, and write the value.
        property real value: 0
        readonly property real minimumValue: ThresholdEntry.minimum(stepper.metric)
        readonly property real maximumValue: ThresholdEntry.maximum(stepper.metric)
        readonly property real stepSize: ThresholdEntry.step(stepper.metric)

        anchors.left: stepper.left
        width: stepper.fieldWidth * Appearance.textScale
        leftPadding: 8
        rightPadding: 8
        topPadding: 4
        bottomPadding: 4
        font.pixelSize: Theme.points(13)
        color: Theme.primary
        selectionColor: Theme.accent
        selectedTextColor: Theme.textOnAccent
        horizontalAlignment: TextInput.AlignRight
        selectByMouse: true
        clip: true
        activeFocusOnTab: true
        inputMethodHints: Qt.ImhPreferNumbers
        text: stepper.valueText
        Accessible.role: Accessible.SpinBox
        Accessible.name: stepper.name
        Accessible.onIncreaseAction: stepper.step(1)
        Accessible.onDecreaseAction: stepper.step(-1)
        onValueChanged: stepper.chooseNumber(field.value)
        onActiveFocusChanged: {
            if (field.activeFocus)
                field.selectAll()
        }
        onEditingFinished: stepper.commit()
        Keys.onUpPressed: stepper.step(1)
        Keys.onDownPressed: stepper.step(-1)
        // Escape goes to the field before any shortcut of the window.
        Keys.onShortcutOverride: event => {
            event.accepted = event.key === Qt.Key_Escape && field.text !== stepper.valueText
        }
        Keys.onEscapePressed: event => {
            event.accepted = field.text !== stepper.valueText
            field.text = stepper.valueText
        }
    }
    Column {
        id: buttons
        anchors.right: parent.right
        spacing: 1

        StepButton {
            objectName: "up"
            height: (field.height - buttons.spacing) / 2
            symbol: "chevron.up"
            onClicked: stepper.step(1)
        }
        StepButton {
            objectName: "down"
            height: (field.height - buttons.spacing) / 2
            symbol: "chevron.down"
            onClicked: stepper.step(-1)
        }
    }
}
