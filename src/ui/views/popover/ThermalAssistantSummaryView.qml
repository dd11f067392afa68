import QtQuick
import Cindertop.Controls
import Cindertop.Popover

// The state of the machine in one line.
Item {
    id: root

    required property PopoverPresentation presentation

    implicitHeight: Math.max(22, status.implicitHeight + Theme.xs)

    Accessible.role: Accessible.StaticText
    Accessible.name: detail.text.length > 0 ? status.text + " · " + detail.text : status.text

    Item {
        id: symbolFrame

        anchors.left: parent.left
        anchors.leftMargin: 11.5
        anchors.verticalCenter: parent.verticalCenter
        width: 15
        height: 15

        Symbol {
            anchors.centerIn: parent
            name: root.presentation.contents.symbolName
            size: 15
            color: Theme.levelColor(root.presentation.contents.level)
        }
    }

    Label {
        id: status

        anchors.left: parent.left
        anchors.leftMargin: 36
        anchors.verticalCenter: parent.verticalCenter
        text: root.presentation.contents.statusText
        font: Theme.bodyStrong
    }

    Label {
        id: separator

        anchors.left: status.right
        anchors.leftMargin: Theme.xs + 1
        anchors.baseline: status.baseline
        visible: detail.text.length > 0
        text: "·"
        color: Theme.secondaryText
    }

    Label {
        id: detail

        anchors.left: separator.right
        anchors.leftMargin: Theme.xs + 1
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.baseline: status.baseline
        text: root.presentation.detailText
        elide: Text.ElideRight
        color: Theme.secondaryText
    }
}
