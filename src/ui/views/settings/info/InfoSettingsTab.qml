import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// In what circumstances the machine runs.
HiddenScrollerScrollView {
    id: root

    required property InfoPresentation presentation

    SettingsSection {
        title: "Context"
        symbolName: "info.circle"

        Card {
            ContextReadoutRow {
                title: "Power"
                symbolName: "powerplug"
                value: root.presentation.powerText
            }

            SettingsDivider {}

            ContextSegmentedReadoutRow {
                title: "Battery"
                symbolName: "battery.100percent"
                segments: root.presentation.batterySegments
                valueColor: root.presentation.batteryLevel < 0 ? Theme.text : Theme.levelText(root.presentation.batteryLevel)
                helpText: root.presentation.batteryHelp
            }

            SettingsDivider {}

            ContextReadoutRow {
                title: "Processor"
                symbolName: "cpu"
                value: root.presentation.processorText
            }

            SettingsDivider {}

            ContextReadoutRow {
                title: "Displays"
                symbolName: "display"
                value: root.presentation.displaysText
            }

            SettingsDivider {}

            ContextReadoutRow {
                title: "Clamshell"
                symbolName: "laptopcomputer"
                value: root.presentation.clamshellText
            }
        }
    }
}
