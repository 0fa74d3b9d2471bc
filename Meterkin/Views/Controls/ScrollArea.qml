import QtQuick
import Meterkin.Views

// Content that may be higher than the area. Scrolls by wheel and bar, by the keys that its owner
// passes on, and to the item that gets the focus.
Flickable {
    id: area

    required property Item content // the only one in it

    readonly property Item focused: Window.activeFocusItem
    readonly property real lineHeight: Theme.points(32)

    function scrollBy(distance: real): void {
        area.contentY = Math.max(0, Math.min(area.contentHeight - area.height, area.contentY + distance))
    }
    // Returns whether the key scrolls.
    function scrollByKey(key: int): bool {
        if (key === Qt.Key_Up)
            area.scrollBy(-area.lineHeight)
        else if (key === Qt.Key_Down)
            area.scrollBy(area.lineHeight)
        else if (key === Qt.Key_PageUp)
            area.scrollBy(area.lineHeight - area.height)
        else if (key === Qt.Key_PageDown)
            area.scrollBy(area.height - area.lineHeight)
        else if (key === Qt.Key_Home)
            area.scrollBy(-area.contentHeight)
        else if (key === Qt.Key_End)
            area.scrollBy(area.contentHeight)
        else
            return false
        return true
    }
    function reveal(): void {
        area.contentY = Scrolling.revealing(area.focused, area.content, area.contentY, area.height)
    }

    contentWidth: area.width
    contentHeight: area.content.height
    interactive: area.contentHeight > area.height
    boundsBehavior: Flickable.StopAtBounds
    clip: area.interactive
    onFocusedChanged: area.reveal()
    onHeightChanged: area.reveal()

    ScrollIndicator {
        parent: area // not its content
        contentHeight: area.contentHeight
        contentY: area.contentY
        onMoved: contentY => area.contentY = contentY
    }
}
