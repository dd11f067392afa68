import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A tab of the tab bar: a symbol over its title.
PressArea {
    id: root

    required property string symbolName
    required property bool isSelected
    readonly property color ink: isSelected ? Theme.link : isHovering ? Theme.text : Theme.secondaryText

    implicitWidth: Math.max(Theme.tabWidth, title.implicitWidth + 2 * Theme.sm)
    implicitHeight: Math.max(48, title.implicitHeight + 34)
    ringRadius: Theme.radiusSurface + Theme.xs
    role: Accessible.PageTab
    cursor: Qt.PointingHandCursor
    activeFocusOnTab: isSelected || activeFocus // the arrows reach the others
    Accessible.selectable: true
    Accessible.selected: isSelected

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusSurface
        color: root.isSelected ? Theme.card : Theme.faded(Theme.text, root.isPressed ? 0.1 : root.isHovering ? 0.05 : 0)

        Behavior on color {
            Ease {}
        }
    }

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 6
        name: root.symbolName
        size: 20
        color: root.ink
    }

    Label {
        id: title

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 5
        text: root.name
        color: root.ink
        font: Theme.caption
    }
}
