import QtQuick
import Cindertop.Controls

// A text that leads somewhere, with a symbol before it where one is named.
PressArea {
    id: root

    property string icon

    implicitWidth: content.implicitWidth
    implicitHeight: content.implicitHeight
    role: Accessible.Link
    cursor: Qt.PointingHandCursor

    Row {
        id: content

        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.icon.length > 0
            name: root.icon
            size: 16
            color: label.color
        }

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
}
