import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A row that leads on.
HoverRow {
    id: root

    required property string symbolName

    implicitHeight: Math.max(Theme.row, label.implicitHeight + Theme.md)
    radius: Theme.radiusSurface

    Symbol {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbolName
        size: 16
        color: Theme.secondaryText
    }

    Label {
        id: label

        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
    }

    Symbol {
        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.right"
        size: 18
        color: Theme.secondaryText
    }
}
