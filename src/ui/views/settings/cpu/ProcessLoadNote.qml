import QtQuick
import Cindertop.Controls

// A remark on what is shown above it.
Item {
    id: root

    required property string text

    width: parent ? parent.width : 0
    implicitHeight: Math.max(symbol.height, label.implicitHeight)
    visible: text.length > 0

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: 2
        name: "info.circle"
        size: 14
        color: Theme.secondaryText
    }

    Label {
        id: label

        anchors.left: symbol.right
        anchors.leftMargin: 6
        anchors.right: parent.right
        text: root.text
        wrapMode: Text.Wrap
        color: Theme.secondaryText
        font: Theme.caption
    }
}
