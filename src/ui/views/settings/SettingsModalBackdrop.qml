import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Darkens the window and keeps the pointer from what lies below.
Rectangle {
    signal dismissed

    color: Theme.backdrop

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: parent.dismissed()
        onWheel: wheel => wheel.accepted = true
    }
}
