import QtQuick
import Cindertop.Controls

// As wide as its parent where nothing else is said; the line ends `inset` before either edge.
Item {
    id: root

    property real inset: 0

    implicitWidth: parent ? parent.width : 0
    implicitHeight: 1
    Accessible.role: Accessible.Separator

    Rectangle {
        x: root.inset
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 2 * root.inset
        height: 1
        color: Theme.divider
    }
}
