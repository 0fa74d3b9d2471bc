import QtQuick
import Meterkin.Views

// A row that explains; hidden without text.
FormRow {
    id: row

    required property string text
    property color color: Theme.secondary

    visible: row.text !== ""

    Text {
        width: parent.width
        text: row.text
        font.pixelSize: Theme.points(11)
        color: row.color
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.WordWrap
        Accessible.ignored: row.text === ""
        Accessible.role: Accessible.StaticText
        Accessible.name: row.text
    }
}
