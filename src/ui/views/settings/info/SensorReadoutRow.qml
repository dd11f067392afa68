import QtQuick
import Cindertop.Charts
import Cindertop.Controls
import Cindertop.Settings

// A sensor: its name, what it has been since the start, its last minutes and its temperature now.
Item {
    id: root

    required property string label
    required property string temperatureText
    required property string rangeText
    required property var heights
    // As wide as the widest in the list, so that they stand below each other.
    required property real temperatureWidth

    implicitWidth: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.row, texts.implicitHeight + Theme.md)

    Accessible.role: Accessible.ListItem
    Accessible.name: label + ", " + temperatureText + (rangeText.length > 0 ? ", from " + rangeText : "")

    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.right: line.left
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Label {
            width: parent.width
            text: root.label
            elide: Text.ElideRight
        }

        Label {
            width: parent.width
            visible: text.length > 0
            text: root.rangeText
            elide: Text.ElideRight
            color: Theme.secondaryText
            font: Theme.caption
        }
    }

    SensorCanvas {
        id: line

        anchors.right: temperature.left
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        width: root.width / 4
        height: Theme.lg
        heights: root.heights
        lineColor: Theme.secondaryText
    }

    Label {
        id: temperature

        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        width: root.temperatureWidth
        horizontalAlignment: Text.AlignRight
        text: root.temperatureText
        font: Theme.bodyMedium
    }
}
