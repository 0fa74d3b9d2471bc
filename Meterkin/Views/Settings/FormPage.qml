import QtQuick
import QtQuick.Templates as T
import Meterkin.Views

// A tab's body: sections below each other, to be scrolled where they do not fit.
Flickable {
    id: page

    default property alias sections: column.data
    readonly property Item focused: Window.activeFocusItem

    contentWidth: page.width
    contentHeight: column.height
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onFocusedChanged: page.contentY = Scrolling.revealing(page.focused, column, page.contentY, page.height)

    T.ScrollBar.vertical: ScrollIndicator {
        Accessible.ignored: true
    }

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
