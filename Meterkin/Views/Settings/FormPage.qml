import QtQuick
import Meterkin.Views

// A tab's body: a column of sections that scrolls when it does not fit.
ScrollArea {
    id: page

    default property alias sections: column.data

    content: column

    // A click beside the controls ends text input.
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
