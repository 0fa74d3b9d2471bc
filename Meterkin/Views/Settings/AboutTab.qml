import QtQuick
import Meterkin.Views

FormPage {
    id: page

    required property UpdaterController updaterController
    required property string version
    required property url projectLink

    readonly property string linkText: page.projectLink

    signal checkForUpdates()

    Column {
        width: parent ? parent.width - 40 : 0
        topPadding: 8
        bottomPadding: 8
        spacing: 6

        SystemSymbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "gauge.with.dots.needle.33percent"
            pointSize: Theme.points(48)
            color: Theme.orange
            Accessible.ignored: true
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "meterkin"
            font.pixelSize: Theme.points(20)
            font.weight: Font.DemiBold
            color: Theme.primary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Version %1").arg(page.version)
            font.pixelSize: Theme.points(13)
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, 330 * Appearance.textScale)
            topPadding: 4
            text: qsTr("Monitor CPU usage, memory pressure, and fan speed from your menu bar.")
            font.pixelSize: Theme.points(13)
            color: Theme.primary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
    }
    FormSection {
        FormRow {
            Column {
                width: parent.width
                spacing: 6

                PushButton {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Check for Updates…")
                    enabled: page.updaterController.canCheckForUpdates
                    Accessible.description: reason.visible ? reason.text : ""
                    onClicked: page.checkForUpdates()
                }
                Text {
                    id: reason
                    width: parent.width
                    visible: text !== ""
                    text: page.updaterController.unavailableReason
                    font.pixelSize: Theme.points(11)
                    color: Theme.secondary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.WordWrap
                }
            }
        }
        ToggleRow {
            text: qsTr("Automatically download updates")
            isOn: page.updaterController.automaticallyDownloadsUpdates
            onChosen: wish => page.updaterController.automaticallyDownloadsUpdates = wish
        }
    }
    LinkButton {
        anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
        visible: page.linkText !== ""
        text: qsTr("Project website")
        onClicked: Qt.openUrlExternally(page.projectLink)
    }
}
