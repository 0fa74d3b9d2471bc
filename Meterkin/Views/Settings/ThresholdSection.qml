import QtQuick
import Meterkin.Views

// The two thresholds of one metric.
FormSection {
    id: section

    required property int metric
    required property MetricSettings settings
    property string note

    title: section.settings.name

    FormNote {
        text: section.note
    }
    ThresholdRow {
        label: qsTr("Green below:")
        section: section.title
        metric: section.metric
        value: section.settings.green
        onChosen: value => section.settings.green = value
    }
    ThresholdRow {
        label: qsTr("Yellow below:")
        section: section.title
        metric: section.metric
        value: section.settings.yellow
        onChosen: value => section.settings.yellow = value
    }
    FormRemark {
        text: section.settings.green >= section.settings.yellow
            ? qsTr("Yellow will not appear: green reaches as far or further.") : ""
    }
}
