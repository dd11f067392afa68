import QtQuick
import Cindertop.Charts
import Cindertop.Controls
import Cindertop.Settings

// The chart of what was recorded with its axes and legend. The pointer or the arrow keys read a moment out.
Column {
    id: root

    required property MonitoringPresentation presentation
    property bool showsTemperature: false
    readonly property bool drawsTemperature: showsTemperature && presentation.hasTemperatures
    readonly property list<color> levelColors: [0, 1, 2, 3].map(level => Theme.levelColor(level))

    spacing: Theme.sm

    Item {
        id: chart

        // Time runs from left to right.
        LayoutMirroring.enabled: false
        LayoutMirroring.childrenInherit: true

        width: parent.width
        height: Math.max(180, Math.min(360, width * 0.36))
        activeFocusOnTab: root.presentation.hasChart
        onActiveFocusChanged: root.presentation.inspectedPosition = -1
        Keys.onLeftPressed: root.presentation.moveInspection(-1)
        Keys.onRightPressed: root.presentation.moveInspection(1)
        Keys.onEscapePressed: event => {
            event.accepted = root.presentation.inspectedPosition >= 0;
            root.presentation.inspectedPosition = -1;
        }

        Accessible.role: Accessible.Chart
        Accessible.name: root.presentation.title
        Accessible.description: root.presentation.hasChart ? root.presentation.historySummary : empty.text
        Accessible.focusable: root.presentation.hasChart

        Repeater {
            model: [100, 60, 25, 0]

            AxisLabel {
                required property int modelData

                x: plot.x - width - 6
                y: plot.y + (1 - modelData / 100) * plot.height - height / 2
                visible: plot.visible
                text: modelData === 100 ? "100%" : modelData
            }
        }

        ThermalHistoryCanvas {
            id: plot

            anchors.fill: parent
            anchors.leftMargin: 36 * Theme.textRoom
            anchors.rightMargin: root.drawsTemperature ? 40 * Theme.textRoom : 0
            anchors.topMargin: 6
            anchors.bottomMargin: 20 * Theme.textRoom
            visible: root.presentation.hasChart
            samples: root.presentation.samples
            now: root.presentation.now
            shownMinutes: root.presentation.shownMinutes
            showsTemperature: root.drawsTemperature
            levelColors: root.levelColors
            cpuColor: Theme.secondaryText
            temperatureColor: Theme.text
            gridColor: Theme.divider

            HoverHandler {
                onPointChanged: root.presentation.inspectedPosition = hovered ? Math.min(1, Math.max(0, point.position.x / plot.width)) : -1
                onHoveredChanged: if (!hovered) {
                    root.presentation.inspectedPosition = -1;
                }
            }

            ThermalHistoryReadoutView {
                anchors.fill: parent
                readout: root.presentation.readout
            }
        }

        Label {
            anchors.centerIn: plot
            visible: plot.visible && !root.presentation.hasHeat
            text: "No heat readings"
            color: Theme.secondaryText
        }

        AxisLabel {
            x: plot.x
            anchors.bottom: parent.bottom
            visible: plot.visible
            text: root.presentation.shownMinutes + "m ago"
        }

        AxisLabel {
            x: plot.x + plot.width - width
            anchors.bottom: parent.bottom
            visible: plot.visible
            text: "now"
        }

        AxisLabel {
            x: plot.x + plot.width + 6
            y: plot.y - height / 2
            visible: root.drawsTemperature
            text: root.presentation.highestTemperatureText
        }

        AxisLabel {
            x: plot.x + plot.width + 6
            y: plot.y + plot.height - height / 2
            visible: root.drawsTemperature
            text: root.presentation.lowestTemperatureText
        }

        EmptyState {
            id: empty

            anchors.centerIn: parent
            width: parent.width
            visible: !root.presentation.hasChart
            symbolName: "chart.xyaxis.line"
            text: "Monitoring data will appear here after a few samples."
        }

        FocusRing {
            control: chart
            radius: Theme.radiusSurface
        }
    }

    MonitoringChartLegend {
        width: parent.width
        levelLabels: root.presentation.levelLabels
        levelColors: root.levelColors
        hasTemperatures: root.presentation.hasTemperatures
        showsTemperature: root.showsTemperature
        onTemperatureToggled: root.showsTemperature = !root.showsTemperature
    }
}
