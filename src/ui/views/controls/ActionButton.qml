import QtQuick
import Cindertop.Controls

// A button with a text, and a symbol before it where one is named.
PressArea {
    id: root

    enum Kind { Plain, Prominent, Destructive, ProminentDestructive }

    property int kind: ActionButton.Plain
    property string symbolName
    property font font: Theme.caption

    readonly property color face: switch (kind) {
        case ActionButton.Prominent:
            return Theme.accent;
        case ActionButton.ProminentDestructive:
            return Theme.danger;
        default:
            return Theme.control;
    }
    readonly property color ink: switch (kind) {
        case ActionButton.Prominent:
        case ActionButton.ProminentDestructive:
            return Theme.onAccent;
        case ActionButton.Destructive:
            return Theme.destructive;
        default:
            return Theme.text;
    }

    cursor: Qt.PointingHandCursor
    implicitWidth: content.implicitWidth + 2 * Theme.md
    implicitHeight: Math.max(28, content.implicitHeight + 2 * Theme.xs)

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusControl
        color: root.isPressed ? Theme.pressed(root.face) : root.face

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.ink
            opacity: root.isHovering && !root.isPressed ? 0.06 : 0

            Behavior on opacity {
                Ease {}
            }
        }
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: Theme.sm

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: name.length > 0
            name: root.symbolName
            size: 16
            color: root.ink
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: root.name
            color: root.ink
            font: root.font
        }
    }
}
