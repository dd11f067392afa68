import QtQuick
import Cindertop.Charts
import Cindertop.Controls
import Cindertop.Settings

// An offender's share at the last samples.
Item {
    id: root

    required property ProcessOffenderDetail offender

    // Time runs from left to right.
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    implicitHeight: Math.max(120, Math.min(240, width * 0.24))

    Accessible.role: Accessible.Chart
    Accessible.name: "CPU History"
    Accessible.description: offender.hasChart ? offender.historySummary : empty.text

    Repeater {
        model: [1, 0.5, 0]

        AxisLabel {
            required property real modelData

            x: plot.x - width - 6
            y: plot.y + (1 - modelData) * plot.height - height / 2
            visible: plot.visible
            text: modelData * root.offender.history.axisMaximum + (modelData > 0 ? "%" : "")
        }
    }

    ProcessLoadCanvas {
        id: plot

        anchors.fill: parent
        anchors.leftMargin: 36 * Theme.textRoom
        anchors.topMargin: 6
        anchors.bottomMargin: 20 * Theme.textRoom
        visible: root.offender.hasChart
        history: root.offender.history
        lineColor: Theme.accent
        gridColor: Theme.divider
    }

    AxisLabel {
        x: plot.x
        anchors.bottom: parent.bottom
        visible: plot.visible
        text: root.offender.historyStartText
    }

    AxisLabel {
        x: plot.x + plot.width - width
        anchors.bottom: parent.bottom
        visible: plot.visible
        text: "now"
    }

    EmptyState {
        id: empty

        anchors.centerIn: parent
        width: parent.width
        visible: !root.offender.hasChart
        symbolName: "clock"
        text: "Collecting CPU data..."
    }
}
