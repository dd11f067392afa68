pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// How hot the machine is and why, and in what circumstances it runs.
HiddenScrollerScrollView {
    id: root

    required property InfoPresentation presentation

    Binding {
        target: root.presentation.heat
        property: "isShown"
        value: root.Window.visibility !== Window.Hidden && root.Window.visibility !== Window.Minimized
    }

    Component.onDestruction: presentation.heat.isShown = false

    SettingsSection {
        title: "Heat"
        symbolName: "flame"

        Card {
            HeatSummary {
                heat: root.presentation.heat
            }

            Repeater {
                model: root.presentation.heat.facts

                Column {
                    id: fact

                    required property string title
                    required property string text
                    required property string symbolName

                    width: parent ? parent.width : 0

                    SettingsDivider {}

                    ContextReadoutRow {
                        title: fact.title
                        symbolName: fact.symbolName
                        value: fact.text
                    }
                }
            }

            SettingsDivider {
                visible: sensors.visible
            }

            SensorList {
                id: sensors

                visible: heat.sensorCountText.length > 0
                heat: root.presentation.heat
            }
        }
    }

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
