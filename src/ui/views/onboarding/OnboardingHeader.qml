import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

Column {
    id: root

    required property string tagline

    spacing: Theme.xs

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "flame"
        size: 48
        color: Theme.accent
    }

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Cindertop"
        color: Theme.text
        font.family: Theme.title.family
        font.weight: Font.Bold
        font.pixelSize: Theme.readout.pixelSize
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: parent.width
        text: root.tagline
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondaryText
        font: Theme.body
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
