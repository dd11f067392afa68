import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// Opens and closes what stands below it.
PressArea {
    id: root

    required property bool isOpen

    implicitWidth: 20 + label.implicitWidth + Theme.xs
    implicitHeight: label.implicitHeight + Theme.xs
    cursor: Qt.PointingHandCursor
    description: isOpen ? "Shown" : "Hidden"

    Symbol {
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        name: root.isOpen ? "chevron.down" : "chevron.right"
        size: 16
        color: label.color
    }

    Label {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        color: root.isHovering ? Theme.text : Theme.secondaryText
        font: Theme.caption
    }
}
