import QtQuick
import Cindertop.Controls
import Cindertop.Popover

// A row of the menu.
PressArea {
    id: root

    required property string symbolName
    property string shortcutText
    readonly property color ink: isHovering ? Theme.onAccent : Theme.text

    implicitHeight: Math.max(28, title.implicitHeight + 10)
    description: shortcutText

    Rectangle {
        anchors.fill: parent
        visible: root.isHovering
        radius: Theme.radiusControl
        color: root.isPressed ? Theme.pressed(Theme.accent) : Theme.accent
    }

    Symbol {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: 10
        width: 18
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbolName
        size: 16
        color: root.ink
    }

    Label {
        id: title

        anchors.left: symbol.right
        anchors.leftMargin: Theme.sm
        anchors.right: shortcut.left
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        elide: Text.ElideRight
        color: root.ink
    }

    Label {
        id: shortcut

        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.shortcutText
        color: root.isHovering ? Theme.onAccent : Theme.secondaryText
        font: Theme.caption
    }
}
