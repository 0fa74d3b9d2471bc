import QtQuick
import Meterkin.Views

// A tab's body: sections below each other, to be scrolled where they do not fit.
ScrollArea {
    id: page

    default property alias sections: column.data

    content: column

    // A click beside the controls ends the typing.
    TapHandler {
        onTapped: page.forceActiveFocus()
    }
    Column {
        id: column
        width: page.width
        topPadding: 18
        bottomPadding: 20
        leftPadding: 20
        rightPadding: 20
        spacing: 20
    }
}
