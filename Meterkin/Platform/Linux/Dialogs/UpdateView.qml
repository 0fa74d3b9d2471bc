import QtQuick
import Meterkin.Views
import Meterkin.Dialogs

Rectangle {
    id: view

    required property UpdateSession session

    signal closeRequested()

    implicitWidth: 400
    implicitHeight: 200
    color: Theme.background
}
