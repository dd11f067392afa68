import QtQuick
import Cindertop.Controls

// Leads back to where one came from.
PressArea {
    id: root

    implicitWidth: chevron.width + label.implicitWidth + Theme.xs
    implicitHeight: Math.max(20, label.implicitHeight)
    cursor: Qt.PointingHandCursor

    Symbol {
        id: chevron

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.left"
        size: 18
        color: label.color
    }

    Label {
        id: label

        anchors.left: chevron.right
        anchors.leftMargin: Theme.xxs
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        color: root.isPressed ? Theme.pressed(Theme.link) : Theme.link
        font: Theme.bodyMedium
    }
}
