import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// Shows `isChecked`, and asks for the other state by `pressed`.
PressArea {
    id: root

    required property bool isChecked

    implicitWidth: 18
    implicitHeight: 18
    role: Accessible.CheckBox
    cursor: Qt.PointingHandCursor
    ringRadius: 4 + Theme.xs
    Accessible.checkable: true
    Accessible.checked: isChecked
    Accessible.onToggleAction: pressed()

    Rectangle {
        readonly property color face: root.isChecked ? Theme.accent : Theme.card

        anchors.fill: parent
        radius: 4
        color: root.isPressed ? Theme.pressed(face) : face
        border.width: root.isChecked ? 0 : 1
        border.color: Theme.secondaryText
    }

    Symbol {
        anchors.centerIn: parent
        visible: root.isChecked
        name: "checkmark"
        size: 14
        color: Theme.onAccent
    }
}
