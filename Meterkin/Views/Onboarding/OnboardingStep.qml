import QtQuick

// One line of a timetable.
SequentialAnimation {
    id: step

    required property int delay // in milliseconds, from the timetable's start

    signal reached()

    PauseAnimation {
        duration: step.delay
    }
    ScriptAction {
        script: step.reached()
    }
}
