import QtQuick
import Cindertop.Controls

// A text that leads somewhere.
PressArea {
    id: root

    property alias font: label.font

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight
    role: Accessible.Link
    cursor: Qt.PointingHandCursor

    Text {
        id: label

        text: root.name
        color: root.isPressed ? Theme.pressed(Theme.link) : Theme.link
        font.family: Theme.body.family
        font.pixelSize: Theme.body.pixelSize
        font.underline: true
        Accessible.ignored: true
    }
}
