import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A raised surface; what it holds stands below each other.
Rectangle {
    id: root

    default property alias content: column.data
    property real padding: 0

    implicitWidth: parent ? parent.width : 0
    implicitHeight: column.implicitHeight + 2 * padding
    radius: Theme.radiusSurface
    color: Theme.card

    Column {
        id: column

        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
    }
}
