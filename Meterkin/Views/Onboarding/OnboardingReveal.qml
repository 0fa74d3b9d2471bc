import QtQuick
import Meterkin.Views

// Fades its content in while that rises to its place.
Item {
    id: reveal

    required property bool shown
    property int duration: 400
    property bool easesIn: false

    implicitWidth: childrenRect.width
    implicitHeight: childrenRect.height
    visible: shown
    opacity: shown ? 1 : 0
    transform: Translate {
        y: Math.round((1 - reveal.opacity) * Theme.points(8))
    }

    Behavior on opacity {
        OnboardingEase {
            span: reveal.duration
            easesIn: reveal.easesIn
        }
    }
}
