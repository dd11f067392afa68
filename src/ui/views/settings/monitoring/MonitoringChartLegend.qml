import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What the chart's colours and lines mean. The temperature is drawn on demand.
Flow {
    id: root

    required property list<string> levelLabels
    required property list<color> levelColors
    required property bool hasTemperatures
    required property bool showsTemperature

    signal temperatureToggled

    spacing: Theme.md
    leftPadding: Theme.isRightToLeft ? 0 : 36 * Theme.textRoom

    Repeater {
        model: root.levelLabels

        MonitoringLegendItem {
            required property int index
            required property string modelData

            color: root.levelColors[index]
            label: modelData
        }
    }

    MonitoringLegendItem {
        color: Theme.secondaryText
        label: "CPU"
        isDotted: true
    }

    PressArea {
        id: temperature

        name: "Temp"
        description: "Shows the temperature in the chart"
        role: Accessible.CheckBox
        visible: root.hasTemperatures
        implicitWidth: content.implicitWidth
        implicitHeight: content.implicitHeight
        cursor: Qt.PointingHandCursor
        onPressed: root.temperatureToggled()
        Accessible.checkable: true
        Accessible.checked: root.showsTemperature
        Accessible.onToggleAction: root.temperatureToggled()

        Row {
            id: content

            spacing: 6

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 12
                height: 2
                color: root.showsTemperature ? Theme.text : Theme.secondaryText
            }

            Text {
                text: temperature.name
                color: root.showsTemperature || temperature.isHovering ? Theme.text : Theme.secondaryText
                font.family: Theme.caption.family
                font.pixelSize: Theme.caption.pixelSize
                font.weight: Theme.caption.weight
                font.underline: true
                Accessible.ignored: true
            }
        }
    }
}
