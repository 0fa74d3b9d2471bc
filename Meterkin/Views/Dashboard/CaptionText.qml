import QtQuick
import Meterkin.Views

// The dashboard's small text.
Text {
    color: Theme.secondary
    font.pixelSize: Theme.points(10)
    Accessible.ignored: true
}
