import QtQuick
import Meterkin.Views

// A text in a dialog. Parts of it may come from servers: never interpreted as rich text.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft
    wrapMode: Text.Wrap
    font.pixelSize: Theme.points(13)
    color: Theme.primary
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
