import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Tells that something went well.
Row {
    id: root

    required property string text

    spacing: Theme.xs

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: "checkmark.circle.fill"
        size: 14
        color: Theme.levelColor(0)
    }

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        color: Theme.levelText(0)
        font: Theme.caption
    }
}
