import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A process: its name, its identifier and its share.
Item {
    id: root

    required property string processName
    required property int processIdentifier
    required property string percentText
    required property bool isFirst

    implicitWidth: parent ? parent.width : 0
    implicitHeight: Math.max(30, label.implicitHeight + Theme.sm)

    Accessible.role: Accessible.ListItem
    Accessible.name: processName + ", process " + processIdentifier + ", " + percentText

    SettingsDivider {
        visible: !root.isFirst
    }

    Label {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.right: identifier.left
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        text: root.processName
        elide: Text.ElideRight
    }

    Label {
        id: identifier

        anchors.right: parent.right
        anchors.rightMargin: Theme.md + Theme.body.pixelSize * 5
        anchors.verticalCenter: parent.verticalCenter
        text: root.processIdentifier
        color: Theme.secondaryText
    }

    Label {
        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        text: root.percentText
    }
}
