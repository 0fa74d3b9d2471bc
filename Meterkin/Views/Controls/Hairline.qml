import QtQuick
import Meterkin.Views

// A line between two areas.
Plate {
    height: 1
    color: Theme.separator
    Accessible.ignored: true
}
