import QtQuick
import Meterkin.Views

// A button of a dialog.
PushButton {
    implicitWidth: Math.max(84 * Appearance.textScale, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: 16
    rightPadding: 16
    topPadding: 5
    bottomPadding: 5
}
