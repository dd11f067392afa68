import QtQuick
import Cindertop.Controls
import Cindertop.Popover

Rectangle {
    id: root

    required property PopoverPresentation presentation

    width: 260
    height: 300
    color: Theme.window

    Symbol {
        anchors.centerIn: parent
        name: "flame"
        size: 48
        color: Theme.accent
    }
}
