import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Who the offender is, and its share of the whole machine.
Item {
    id: root

    required property ProcessOffenderDetail offender

    width: parent ? parent.width : 0
    implicitHeight: Math.max(icon.height, names.implicitHeight, shares.implicitHeight)

    Accessible.role: Accessible.Heading
    Accessible.name: [offender.displayName, offender.categoryLabel, offender.percentText, offender.graphicsText].filter(text => text.length > 0).join(", ")

    ProcessIconView {
        id: icon

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        source: root.offender.iconSource
        size: 36
    }

    Column {
        id: names

        anchors.left: icon.right
        anchors.leftMargin: Theme.md
        anchors.right: shares.left
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.xxs

        Label {
            width: parent.width
            text: root.offender.displayName
            elide: Text.ElideRight
            font: Theme.title
        }

        Label {
            width: parent.width
            text: root.offender.categoryLabel
            elide: Text.ElideRight
            color: Theme.secondaryText
            font: Theme.caption
        }
    }

    Column {
        id: shares

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter

        Readout {
            anchors.right: parent.right
            text: root.offender.percentText
            color: Theme.text
            font: Theme.readout
        }

        Label {
            anchors.right: parent.right
            visible: text.length > 0
            text: root.offender.graphicsText
            color: Theme.secondaryText
            font: Theme.caption
        }
    }
}
