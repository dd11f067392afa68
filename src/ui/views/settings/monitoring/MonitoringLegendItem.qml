import QtQuick
import Cindertop.Controls

// What a colour means.
Row {
    id: root

    required property color color
    required property string label
    property bool isDotted: false

    spacing: 6

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    Item {
        anchors.verticalCenter: parent.verticalCenter
        width: root.isDotted ? 14 : 8
        height: 8

        Repeater {
            model: root.isDotted ? 4 : 1

            Rectangle {
                required property int index

                x: index * 4
                anchors.verticalCenter: parent.verticalCenter
                width: root.isDotted ? 2 : 8
                height: width
                radius: width / 2
                color: root.color
            }
        }
    }

    Label {
        text: root.label
        color: Theme.secondaryText
        font: Theme.caption
    }
}
