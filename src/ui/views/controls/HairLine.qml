import QtQuick
import Cindertop.Controls

// As wide as its parent where nothing else is said.
Rectangle {
    implicitWidth: parent ? parent.width : 0
    implicitHeight: 1
    color: Theme.divider
    Accessible.role: Accessible.Separator
}
