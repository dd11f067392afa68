import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What a tab shows, scrolled by wheel, touch and keyboard, without scroll bars. The control with the keyboard's
// focus is kept in sight.
Flickable {
    id: root

    default property alias content: column.data
    property real padding: Theme.lg
    property alias spacing: column.spacing
    readonly property Item focused: Window.activeFocusItem

    contentWidth: width
    contentHeight: column.implicitHeight + 2 * padding
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    Keys.onPressed: event => {
        const page = height - Theme.listRow;
        const ways = {
            [Qt.Key_PageDown]: page,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_End]: contentHeight,
            [Qt.Key_Home]: -contentHeight
        };
        event.accepted = event.key in ways;
        if (event.accepted) {
            scrollTo(contentY + ways[event.key]);
        }
    }

    onFocusedChanged: if (focused && holds(focused)) {
        const top = focused.mapToItem(contentItem, 0, 0).y - Theme.lg;
        const bottom = top + focused.height + 2 * Theme.lg;
        scrollTo(Math.min(Math.max(contentY, bottom - height), top));
    }

    function scrollTo(y: real) {
        contentY = Math.max(0, Math.min(y, contentHeight - height));
    }

    function holds(item: Item): bool {
        for (let above = item; above; above = above.parent) {
            if (above === column) {
                return true;
            }
        }
        return false;
    }

    Column {
        id: column

        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
        spacing: Theme.lg
    }
}
