import QtQuick
import Cindertop.Controls
import Cindertop.Popover

Item {
    implicitHeight: 9

    HairLine {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 20
    }
}
