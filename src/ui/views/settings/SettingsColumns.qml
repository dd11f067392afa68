import QtQuick
import Cindertop.Controls

// What stands side by side where there is room for two columns, else below each other.
Item {
    id: root

    property alias first: left.data
    property alias second: right.data
    readonly property bool isWide: width >= 680 * Theme.textRoom
    readonly property real columnWidth: isWide ? (width - Theme.lg) / 2 : width

    width: parent ? parent.width : 0
    implicitHeight: isWide ? Math.max(left.implicitHeight, right.implicitHeight) : right.y + right.implicitHeight

    Column {
        id: left

        anchors.left: parent.left
        width: root.columnWidth
        spacing: Theme.lg
    }

    Column {
        id: right

        anchors.right: parent.right
        y: root.isWide ? 0 : left.implicitHeight + Theme.lg
        width: root.columnWidth
        spacing: Theme.lg
    }
}
