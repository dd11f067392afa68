import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// How today's time was spent, by level.
SettingsSection {
    id: root

    required property MonitoringPresentation presentation

    title: "Time by Level"
    symbolName: "speedometer"

    Card {
        padding: Theme.sm

        Repeater {
            model: root.presentation.levelLabels

            MonitoringLevelStatRow {
                required property int index
                required property string modelData

                level: index
                label: modelData
                duration: root.presentation.levelDurations[index]
                durationText: root.presentation.durationText(duration)
                total: root.presentation.totalDuration
            }
        }
    }
}
