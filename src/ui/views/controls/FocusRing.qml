import QtQuick
import Cindertop.Controls

// Around the control that the keyboard speaks to, with a gap.
Rectangle {
    id: root

    required property Item control

    anchors.fill: control
    anchors.margins: -4
    visible: control.activeFocus
    color: "transparent"
    radius: Theme.radiusControl + 4
    border.width: 2
    border.color: Theme.accent
}
