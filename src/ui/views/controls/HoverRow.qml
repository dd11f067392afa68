import QtQuick
import Cindertop.Controls

// A row of a list that is pressed as a whole. What it holds lies over its background.
PressArea {
    id: root

    property real radius: Theme.radiusControl

    cursor: Qt.PointingHandCursor
    implicitHeight: Theme.listRow
    ringRadius: radius + Theme.xs

    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: Theme.text
        opacity: root.isPressed ? 0.1 : root.isHovering ? 0.05 : 0

        Behavior on opacity {
            Ease {}
        }
    }
}
