import QtQuick
import Meterkin.Views
import Meterkin.Dialogs

// One check for updates, from its start to its result.
FocusScope {
    id: view

    required property UpdateSession session

    readonly property color color: Theme.windowBackground
    readonly property int phase: view.session.phase
    readonly property bool isRunning: view.phase === UpdateSession.Checking
        || view.phase === UpdateSession.Downloading || view.phase === UpdateSession.Installing
    readonly property string current: view.session.currentVersion
    readonly property string offered: view.named(view.session.offeredVersion)
    // No button while something runs: the second press of two on Return must not cancel it.
    readonly property Item focusTarget: view.isRunning ? texts as Item
        : actionButton.visible ? actionButton as Item : dismissButton as Item

    signal closeRequested()

    function headingOf(phase: int): string {
        switch (phase) {
        case UpdateSession.Checking:
            return qsTr("Checking for updates…")
        case UpdateSession.UpToDate:
            return qsTr("You're up to date!")
        case UpdateSession.Offered:
            return qsTr("A new version of Meterkin is available!")
        case UpdateSession.Downloading:
            return qsTr("Downloading update…")
        case UpdateSession.Installing:
            return qsTr("Installing update…")
        case UpdateSession.Installed:
            return qsTr("%1 is installed.").arg(view.offered)
        default:
            return view.session.offeredVersion === "" ? qsTr("Updates could not be checked for.")
                : qsTr("The update could not be installed.")
        }
    }
    function detailOf(phase: int): string {
        switch (phase) {
        case UpdateSession.Checking:
            return view.current === "" ? "" : qsTr("You have %1.").arg(view.named(view.current))
        case UpdateSession.UpToDate:
            return view.current === "" ? "" : qsTr("%1 is the latest version.").arg(view.named(view.current))
        case UpdateSession.Offered:
            return (view.session.isDownloaded ? qsTr("%1 is downloaded and ready to install.")
                                              : qsTr("%1 can be installed now.")).arg(view.offered)
                + (view.current === "" ? "" : "\n" + qsTr("You have %1.").arg(view.current))
        case UpdateSession.Downloading:
        case UpdateSession.Installing:
            return view.offered + (view.session.percent < 0 ? "" : " – " + view.session.percent + "%")
        case UpdateSession.Installed:
            return qsTr("It takes effect when Meterkin is restarted.")
        default:
            return view.session.problem
        }
    }
    function named(version: string): string {
        return version === "" ? "Meterkin" : "Meterkin " + version
    }
    function pressDefault(): void {
        if (actionButton.visible)
            actionButton.clicked()
        else if (dismissButton.visible)
            dismissButton.clicked()
    }

    LayoutMirroring.enabled: Appearance.mirrored
    LayoutMirroring.childrenInherit: true
    implicitWidth: 440 * Appearance.textScale
    // The phases without notes have the same height, so that the window does not jump.
    implicitHeight: area.y + Math.max(Theme.points(64), texts.height) + 20 + buttons.height + 20
    Accessible.role: Accessible.Dialog
    Accessible.name: heading.text
    Accessible.description: detail.text
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) view.pressDefault() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) view.pressDefault() }
    Keys.onEscapePressed: {
        if (!view.isRunning)
            view.closeRequested()
        else if (view.session.isCancellable)
            view.session.cancelRequested()
    }
    Keys.onPressed: event => event.accepted = area.scrollByKey(event.key)
    onFocusTargetChanged: view.focusTarget.forceActiveFocus(Qt.OtherFocusReason)

    Plate {
        anchors.fill: parent
        color: view.color
    }
    ProgramIcon {
        id: icon

        anchors.left: parent.left
        anchors.leftMargin: 20
        y: 20
        width: Theme.points(56)
        height: width
        Accessible.ignored: true
    }
    ScrollArea {
        id: area

        anchors.left: icon.right
        anchors.leftMargin: 16
        anchors.right: parent.right
        y: 22
        height: Math.max(0, Math.min(texts.height, buttons.y - 20 - y))
        content: texts

        Column {
            id: texts

            anchors.left: parent.left
            width: area.width - 20
            spacing: 6
            Accessible.role: Accessible.Grouping
            Accessible.focusable: true
            Accessible.name: heading.text

            PlainText {
                id: heading

                width: parent.width
                text: view.headingOf(view.phase)
                font.pixelSize: Theme.points(14)
                font.weight: Font.DemiBold
            }
            PlainText {
                id: detail

                width: parent.width
                visible: text !== ""
                text: view.detailOf(view.phase)
                maximumLineCount: 8
                elide: Text.ElideRight
            }
            Item {
                width: parent.width
                height: progress.height + 8
                visible: view.isRunning

                ProgressLine {
                    id: progress

                    anchors.bottom: parent.bottom
                    width: parent.width
                    percent: view.session.percent
                }
            }
            Item {
                width: parent.width
                height: notes.height + 8
                visible: view.phase === UpdateSession.Offered && view.session.notes !== ""

                ReleaseNotes {
                    id: notes

                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: implicitHeight
                    notes: view.session.notes
                }
            }
        }
    }
    Row {
        id: buttons

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 20
        spacing: 10

        WideButton {
            objectName: "cancel"
            visible: view.isRunning
            enabled: view.session.isCancellable
            text: qsTr("Cancel")
            onClicked: view.session.cancelRequested()
        }
        WideButton {
            id: dismissButton

            objectName: "dismiss"
            visible: !view.isRunning
            isDefault: !actionButton.visible
            text: view.phase === UpdateSession.Offered || view.phase === UpdateSession.Installed
                ? qsTr("Later") : qsTr("Close")
            onClicked: view.closeRequested()
        }
        WideButton {
            id: actionButton

            objectName: "action"
            visible: !view.isRunning && view.phase !== UpdateSession.UpToDate
            isDefault: true
            text: view.phase === UpdateSession.Offered ? qsTr("Install")
                : view.phase === UpdateSession.Installed ? qsTr("Restart Now") : qsTr("Try Again")
            onClicked: {
                if (view.phase === UpdateSession.Offered)
                    view.session.installRequested()
                else if (view.phase === UpdateSession.Installed)
                    view.session.restartRequested()
                else if (view.phase === UpdateSession.Failed)
                    view.session.retryRequested()
            }
        }
    }
}
