import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One of a picker's options; the chosen one has a mark.
PressArea {
    id: root

    required property string symbolName
    required property bool isChosen
    readonly property bool isLit: isHovering || activeFocus
    readonly property color ink: isLit ? Theme.onAccent : Theme.text

    implicitWidth: 26 + label.implicitWidth + Theme.md
    implicitHeight: Math.max(28, label.implicitHeight + Theme.sm)
    role: Accessible.RadioButton
    cursor: Qt.PointingHandCursor
    Accessible.checkable: true
    Accessible.checked: isChosen

    Rectangle {
        anchors.fill: parent
        visible: root.isLit
        radius: Theme.radiusControl - 2
        color: root.isPressed ? Theme.pressed(Theme.accent) : Theme.accent
    }

    Symbol {
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: root.isChosen
        name: "checkmark"
        size: 14
        color: root.ink
    }

    PickerLabel {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: 26
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        symbolName: root.symbolName
        ink: root.ink
    }
}
