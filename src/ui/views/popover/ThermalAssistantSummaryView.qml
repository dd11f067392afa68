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

        x: 11.5
        anchors.verticalCenter: parent.verticalCenter
        width: 15
        height: 15

        Symbol {
            anchors.centerIn: parent
            name: root.presentation.symbolName
            size: 15
            color: Theme.levelColor(root.presentation.level)
        }
    }

    Text {
        id: status

        x: 36
        anchors.verticalCenter: parent.verticalCenter
        text: root.presentation.statusText
        color: Theme.text
        font: Theme.bodyStrong
        Accessible.ignored: true
    }

    Text {
        id: separator

        anchors.left: status.right
        anchors.leftMargin: Theme.xs + 1
        anchors.baseline: status.baseline
        visible: detail.text.length > 0
        text: "·"
        color: Theme.secondaryText
        font: Theme.body
        Accessible.ignored: true
    }

    Text {
        id: detail

        anchors.left: separator.right
        anchors.leftMargin: Theme.xs + 1
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.baseline: status.baseline
        text: root.presentation.detailText
        elide: Text.ElideRight
        color: Theme.secondaryText
        font: Theme.body
        Accessible.ignored: true
    }
}
