import QtQuick
import Meterkin.Views

FormRow {
    id: row

    required property string text
    required property bool isOn

    signal chosen(wish: bool)

    Toggle {
        width: parent.width
        text: row.text
        isOn: row.isOn
        onChosen: wish => row.chosen(wish)
    }
}
