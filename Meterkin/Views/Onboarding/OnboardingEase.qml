import QtQuick
import Meterkin.Views

// Slows down at its end and, if it eases in, starts slowly too. With reduced motion it is at its
// end at once.
NumberAnimation {
    id: ease

    required property int span // milliseconds
    property bool easesIn: false

    duration: Appearance.reducesMotion ? 0 : ease.span
    easing.type: Easing.BezierSpline
    easing.bezierCurve: ease.easesIn ? [0.42, 0, 0.58, 1, 1, 1] : [0, 0, 0.58, 1, 1, 1]
}
