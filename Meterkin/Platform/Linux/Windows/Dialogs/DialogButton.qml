import QtQuick
import Meterkin.Views

// One of a dialog's buttons. Return presses the default one from anywhere.
PushButton {
    implicitWidth: Math.max(84 * Appearance.textScale, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: 16
    rightPadding: 16
    topPadding: 5
    bottomPadding: 5
}
