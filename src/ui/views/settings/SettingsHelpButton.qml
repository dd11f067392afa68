import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Shows a sentence that explains what it stands beside.
PressArea {
    id: root

    required property string message

    name: "Help"
    description: message
    implicitWidth: 20
    implicitHeight: 20
    ringRadius: 10 + Theme.xs
    cursor: Qt.PointingHandCursor
    onPressed: content.opened ? content.close() : content.open()

    Symbol {
        anchors.centerIn: parent
        name: "questionmark.circle"
        size: 15
        color: root.isHovering || content.opened ? Theme.text : Theme.secondaryText
    }

    SettingsHelpContent {
        id: content

        message: root.message
    }
}
