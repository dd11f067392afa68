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
        width: parent.width
        visible: !root.isFirst
    }

    Text {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.right: identifier.left
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        text: root.processName
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font: Theme.body
        Accessible.ignored: true
    }

    Text {
        id: identifier

        anchors.right: parent.right
        anchors.rightMargin: Theme.md + Theme.body.pixelSize * 5
        anchors.verticalCenter: parent.verticalCenter
        text: root.processIdentifier
        color: Theme.secondaryText
        font: Theme.body
        Accessible.ignored: true
    }

    Text {
        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        text: root.percentText
        color: Theme.text
        font: Theme.body
        Accessible.ignored: true
    }
}
