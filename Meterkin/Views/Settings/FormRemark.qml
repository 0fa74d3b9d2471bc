import QtQuick
import Meterkin.Views

// A warning about the row above.
FormNote {
    isApart: false
    color: Theme.warning
}
