import QtQuick
import Cindertop.Controls

// A level's time against the day's.
Item {
    id: root

    required property int level
    required property string label
    required property real duration
    required property string durationText
    required property real total

    implicitWidth: parent ? parent.width : 0
    implicitHeight: Math.max(28, title.implicitHeight + Theme.sm)

    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + durationText

    Label {
        id: title

        anchors.left: parent.left
        anchors.leftMargin: Theme.xs
        width: Theme.body.pixelSize * 5
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
    }

    Rectangle {
        id: track

        anchors.left: title.right
        anchors.leftMargin: Theme.sm
        anchors.right: parent.right
        anchors.rightMargin: Theme.body.pixelSize * 6
        anchors.verticalCenter: parent.verticalCenter
        height: 6
        radius: height / 2
        color: Theme.control

        Rectangle {
            readonly property real share: root.total > 0 ? root.duration / root.total : 0

            width: share > 0 ? Math.max(parent.height, share * parent.width) : 0
            height: parent.height
            radius: height / 2
            color: Theme.levelColor(root.level)
        }
    }

    Label {
        anchors.right: parent.right
        anchors.rightMargin: Theme.xs
        anchors.verticalCenter: parent.verticalCenter
        text: root.durationText
        color: Theme.secondaryText
    }
}
