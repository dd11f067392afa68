import QtQuick
import Cindertop.Controls
import Cindertop.Settings

Rectangle {
    id: root

    required property SettingsPresentation presentation

    width: 460
    height: 640
    color: Theme.window

    Symbol {
        anchors.centerIn: parent
        name: "flame"
        size: 48
        color: Theme.accent
    }
}
