import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A symbol and its text.
Row {
    id: root

    required property string text
    required property string symbolName
    property color ink: Theme.text

    spacing: 6

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbolName.length > 0
        name: root.symbolName
        size: 15
        color: root.ink
    }

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        color: root.ink
        font: Theme.caption
        Accessible.ignored: true
    }
}
