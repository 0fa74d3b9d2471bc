import QtQuick
import Meterkin.Views

FormRow {
    id: row

    required property string section
    required property int metric
    required property real value

    signal chosen(value: real)

    Stepper {
        anchors.right: parent.right
        name: row.section + ", " + row.label
        metric: row.metric
        value: row.value
        onChosen: value => row.chosen(value)
    }
}
