pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Every sensor, shown or folded away.
Column {
    id: root

    required property HeatPresentation heat

    width: parent ? parent.width : 0

    HoverRow {
        id: header

        name: "Sensors"
        description: (root.heat.areSensorsShown ? "Expanded" : "Collapsed") + ", " + root.heat.sensorCountText
        width: parent.width
        implicitHeight: Math.max(Theme.row, title.implicitHeight + Theme.md)
        radius: Theme.radiusSurface
        onPressed: root.heat.areSensorsShown = !root.heat.areSensorsShown

        Symbol {
            id: chevron

            anchors.left: parent.left
            anchors.leftMargin: Theme.md
            anchors.verticalCenter: parent.verticalCenter
            name: root.heat.areSensorsShown ? "chevron.down" : "chevron.right"
            size: 16
            color: Theme.secondaryText
        }

        Label {
            id: title

            anchors.left: chevron.right
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            text: header.name
        }

        Label {
            anchors.right: parent.right
            anchors.rightMargin: Theme.md
            anchors.verticalCenter: parent.verticalCenter
            text: root.heat.sensorCountText
            color: Theme.secondaryText
        }
    }

    TextMetrics {
        id: widest

        font: Theme.bodyMedium
        text: "188°C"
    }

    Repeater {
        model: root.heat.sensors

        Column {
            id: row

            required property string label
            required property string temperatureText
            required property string rangeText
            required property var heights

            width: root.width

            SettingsDivider {}

            SensorReadoutRow {
                label: row.label
                temperatureText: row.temperatureText
                rangeText: row.rangeText
                heights: row.heights
                temperatureWidth: widest.advanceWidth
            }
        }
    }
}
