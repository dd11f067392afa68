import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// How hot it was lately, and today.
HiddenScrollerScrollView {
    id: root

    required property MonitoringPresentation presentation

    Binding {
        target: root.presentation
        property: "isShown"
        value: root.Window.visibility !== Window.Hidden && root.Window.visibility !== Window.Minimized
    }

    Component.onDestruction: presentation.isShown = false

    SettingsSection {
        title: titleMeasure.width + Theme.xl < width ? titleMeasure.text : root.presentation.shortTitle
        symbolName: "chart.xyaxis.line"

        TextMetrics {
            id: titleMeasure

            text: root.presentation.title
            font: Theme.section
        }

        Card {
            padding: Theme.md

            ThermalHistoryChart {
                width: parent.width
                presentation: root.presentation
            }
        }
    }

    SettingsColumns {
        first: MonitoringTodaySummary {
            presentation: root.presentation
        }
        second: MonitoringLevelStatsSection {
            visible: root.presentation.hasLevels
            presentation: root.presentation
        }
    }
}
