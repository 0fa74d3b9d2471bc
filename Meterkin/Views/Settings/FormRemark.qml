import QtQuick
import Meterkin.Views

// What the user should know of the row above; nothing is shown when there is nothing to say.
FormRow {
    id: row

    required property string text

    visible: row.text !== ""
    isApart: false

    Text {
        width: parent.width
        text: row.text
        font.pixelSize: Theme.points(11)
        color: Theme.orange
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.StaticText
        Accessible.name: row.text
    }
}
