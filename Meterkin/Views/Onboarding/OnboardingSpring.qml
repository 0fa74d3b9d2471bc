import QtQuick
import Meterkin.Views

// A damped spring, released at 0, that comes to rest at 1. Easing curves have a fixed duration; a
// spring ends when its swing has died away.
QtObject {
    id: spring

    required property bool released
    required property real response // seconds of one swing without damping
    required property real dampingFraction // of the damping that no longer swings, below 1

    readonly property real frequency: 2 * Math.PI / response
    readonly property real decay: dampingFraction * frequency
    readonly property real dampedFrequency: frequency * Math.sqrt(1 - dampingFraction * dampingFraction)
    // The swing is down to a thousandth then.
    readonly property real settlingTime: Math.log(1000) / decay
    readonly property real position: elapsed < settlingTime ? positionAt(elapsed) : 1
    property real elapsed: released ? settlingTime : 0

    function positionAt(seconds: real): real {
        const phase = dampedFrequency * seconds
        return 1 - Math.exp(-decay * seconds)
            * (Math.cos(phase) + decay / dampedFrequency * Math.sin(phase))
    }

    Behavior on elapsed {
        NumberAnimation {
            duration: Appearance.reducesMotion ? 0 : Math.round(1000 * spring.settlingTime)
        }
    }
}
