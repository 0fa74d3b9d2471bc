import QtQuick

// Slows down at its end and, if it eases in, starts slowly too.
NumberAnimation {
    id: ease

    property bool easesIn: false

    easing.type: Easing.BezierSpline
    easing.bezierCurve: ease.easesIn ? [0.42, 0, 0.58, 1, 1, 1] : [0, 0, 0.58, 1, 1, 1]
}
