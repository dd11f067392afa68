import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What today was like so far.
SettingsSection {
    id: root

    required property MonitoringPresentation presentation

    title: "Today"
    symbolName: "calendar"

    Card {
        MonitoringSummaryRow {
            title: "Tracked"
            symbolName: "timer"
            value: root.presentation.trackedText
        }

        SettingsDivider {}

        MonitoringSummaryRow {
            title: "Serious"
            symbolName: "speedometer"
            value: root.presentation.seriousText
        }

        SettingsDivider {}

        MonitoringSummaryRow {
            title: "Critical"
            symbolName: "exclamationmark.octagon"
            value: root.presentation.criticalText
        }

        SettingsDivider {}

        MonitoringSummaryRow {
            title: "Frequent load"
            symbolName: "cpu"
            value: root.presentation.frequentLoadText
            iconSource: root.presentation.frequentLoadIconSource
        }
    }
}
