import QtQuick
import Meterkin.Views

// A row that explains.
FormRow {
    id: row

    required property string text

    Text {
        width: parent.width
        text: row.text
        font.pixelSize: Theme.points(11)
        color: Theme.secondary
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.StaticText
        Accessible.name: row.text
    }
}
