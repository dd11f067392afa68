import QtQuick
import Cindertop.Controls

// Scrolled by wheel, touch and keyboard where it is too small for what it holds, without scroll bars. The control with
// the keyboard's focus is kept in sight.
Flickable {
    id: root

    default property alias content: column.data
    property real padding: 0
    // Wider content is hard to read: it stands in the middle.
    property real widest: Infinity
    property alias spacing: column.spacing
    readonly property Item focused: Window.activeFocusItem

    implicitHeight: contentHeight
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * padding
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: interactive

    Keys.onPressed: event => {
        const page = height - Theme.listRow;
        const ways = {
            [Qt.Key_PageDown]: page,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_End]: contentHeight,
            [Qt.Key_Home]: -contentHeight
        };
        event.accepted = interactive && event.key in ways;
        if (event.accepted) {
            scrollTo(contentY + ways[event.key]);
        }
    }

    onFocusedChanged: if (focused && holds(focused)) {
        const top = focused.mapToItem(contentItem, 0, 0).y - Theme.lg;
        const bottom = top + focused.height + 2 * Theme.lg;
        scrollTo(Math.min(Math.max(contentY, bottom - height), top));
    }

    onHeightChanged: scrollTo(contentY)
    onContentHeightChanged: scrollTo(contentY)

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

        x: (root.width - width) / 2
        y: root.padding
        width: Math.min(root.width - 2 * root.padding, root.widest)
    }
}
