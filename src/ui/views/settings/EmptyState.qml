import QtQuick
import Cindertop.Controls

// In place of what is not there (yet): a symbol and a sentence.
Column {
    id: root

    required property string symbolName
    required property string text

    spacing: Theme.sm

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: root.symbolName
        size: 24
        color: Theme.secondaryText
    }

    Label {
        width: parent.width
        text: root.text
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.secondaryText
    }
}
