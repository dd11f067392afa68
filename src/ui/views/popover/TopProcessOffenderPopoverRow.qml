import QtQuick
import Cindertop.Controls
import Cindertop.Popover

// Who uses the processor most.
Item {
    id: root

    required property string displayName
    required property string percentText
    required property string iconSource

    implicitHeight: Math.max(icon.height, label.implicitHeight) + 10

    Accessible.role: Accessible.StaticText
    Accessible.name: root.displayName + ", " + root.percentText

    ApplicationIcon {
        id: icon

        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        source: root.iconSource
        size: 18
    }

    Label {
        id: label

        anchors.left: icon.right
        anchors.leftMargin: Theme.sm
        anchors.right: share.left
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        text: root.displayName
        elide: Text.ElideRight
        font: Theme.bodyMedium
    }

    Readout {
        id: share

        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.percentText
        color: Theme.text
        font: Theme.smallReadout
    }
}
