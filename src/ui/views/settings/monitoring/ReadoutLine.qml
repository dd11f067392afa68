import QtQuick
import Cindertop.Controls

// A value of a read-out; without one there is no line.
Item {
    id: root

    required property string title
    required property string value
    property color titleColor: Theme.secondaryText

    visible: value.length > 0
    implicitWidth: Math.max(96, label.implicitWidth + number.implicitWidth + Theme.md)
    implicitHeight: label.implicitHeight

    Label {
        id: label

        anchors.left: parent.left
        text: root.title
        color: root.titleColor
        font: Theme.caption
    }

    Label {
        id: number

        anchors.right: parent.right
        text: root.value
        font: Theme.caption
    }
}
