import QtQuick
import Meterkin.Views

// The two thresholds of one metric.
FormSection {
    id: section

    required property string name // of the settings, without "Green" and "Yellow"
    required property int metric
    required property real green
    required property real yellow
    property string note

    signal greenChosen(value: real)
    signal yellowChosen(value: real)

    FormNote {
        text: section.note
    }
    ThresholdRow {
        objectName: section.name + "Green"
        label: "Green below:"
        section: section.title
        metric: section.metric
        value: section.green
        onChosen: value => section.greenChosen(value)
    }
    ThresholdRow {
        objectName: section.name + "Yellow"
        label: "Yellow below:"
        section: section.title
        metric: section.metric
        value: section.yellow
        onChosen: value => section.yellowChosen(value)
    }
    FormRemark {
        objectName: section.name + "Remark"
        text: section.green >= section.yellow ? "Yellow will not appear: green reaches as far or further." : ""
    }
}
