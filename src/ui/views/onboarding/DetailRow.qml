import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// One line of the hardware's details.
Item {
    id: root

    required property string title
    required property string value
    property bool isLast: false

    implicitHeight: Math.max(26, text.implicitHeight + 10, label.implicitHeight + 10)

    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + value

    Label {
        id: label

        width: Math.min(implicitWidth, root.width / 2)
        wrapMode: Text.Wrap
        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        text: root.title
        font: Theme.caption
    }

    Label {
        id: text

        anchors.left: label.right
        anchors.leftMargin: Theme.lg
        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignRight
        text: root.value
        wrapMode: Text.Wrap
        color: Theme.secondaryText
        font: Theme.caption
    }

    HairLine {
        anchors.bottom: parent.bottom
        inset: Theme.md
        visible: !root.isLast
    }
}
