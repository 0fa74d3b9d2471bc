import QtQuick
import Meterkin.Views

// What the user should know of the row above.
FormNote {
    isApart: false
    color: Theme.orange
}
