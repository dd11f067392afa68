import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One fact: its name at the left, its value at the right.
Item {
    id: root

    required property string title
    required property string value
    required property string symbolName
    property color valueColor: Theme.secondaryText
    property alias showsSymbol: symbol.visible

    implicitWidth: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.row, text.implicitHeight + Theme.md, label.implicitHeight + Theme.md)

    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + value

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
        width: Math.min(implicitWidth, root.width / 2)
        text: root.title
        wrapMode: Text.Wrap
    }

    Label {
        id: text

        anchors.left: label.right
        anchors.leftMargin: Theme.lg
        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignRight
        text: root.value
        wrapMode: Text.Wrap
        color: root.valueColor
    }
}
