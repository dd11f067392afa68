import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Shows `isOn` and asks for the other state.
PressArea {
    id: root

    required property bool isOn

    signal toggled(isOn: bool)

    implicitWidth: 34
    implicitHeight: 20
    ringRadius: 10 + Theme.xs
    role: Accessible.CheckBox
    cursor: Qt.PointingHandCursor
    onPressed: toggled(!isOn)

    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onToggleAction: if (enabled) {
        pressed();
    }

    Rectangle {
        id: track

        readonly property color face: root.isOn ? Theme.accent : Theme.switchTrackOff

        anchors.fill: parent
        radius: height / 2
        color: root.isPressed ? Theme.pressed(face) : face

        Behavior on color {
            Ease {}
        }

        Rectangle {
            x: root.isOn ? parent.width - width - 2 : 2
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            height: 16
            radius: 8
            color: root.isOn ? Theme.switchKnobOn : Theme.switchKnobOff

            Behavior on x {
                Ease {}
            }
        }
    }
}
