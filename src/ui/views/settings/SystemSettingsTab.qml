import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The preferences, and help when something misbehaves.
HiddenScrollerScrollView {
    id: root

    required property SystemPresentation presentation

    signal aboutRequested

    SettingsSection {
        title: "App Settings"
        symbolName: "slider.horizontal.3"

        Card {
            SettingsControlRow {
                title: "Menu Bar Info"
                symbolName: "menubar.rectangle"
                helpText: "Choose which thermal label appears next to the menu bar icon. Icon Only keeps the menu bar narrow."

                SettingsPicker {
                    name: "Menu Bar Info"
                    labels: root.presentation.modeLabels
                    symbolNames: root.presentation.modeSymbolNames
                    currentIndex: root.presentation.modeIndex
                    onPicked: index => root.presentation.modeIndex = index
                }
            }

            SettingsDivider {}

            SettingsToggleRow {
                title: "Launch at Login"
                symbolName: "arrow.clockwise.circle"
                helpText: "Starts Cindertop automatically when you sign in."
                detail: root.presentation.launchAtLoginDetail
                isOn: root.presentation.launchesAtLogin
                onToggled: isOn => root.presentation.launchesAtLogin = isOn
            }

            SettingsDivider {}

            SettingsToggleRow {
                title: "Show in Dock"
                symbolName: "dock.rectangle"
                helpText: "Shows Cindertop in the Dock as well as the menu bar."
                isOn: root.presentation.showsDockIcon
                onToggled: isOn => root.presentation.showsDockIcon = isOn
            }

            SettingsDivider {}

            SettingsToggleRow {
                title: "System Notifications"
                symbolName: "bell"
                helpText: "Allows quiet macOS notifications when Cindertop sees serious, critical thermal pressure, or recovery."
                detail: root.presentation.notificationsDetail
                detailColor: Theme.destructive
                isOn: root.presentation.notificationsEnabled
                onToggled: isOn => root.presentation.notificationsEnabled = isOn
            }
        }
    }

    SettingsSection {
        title: "Sensors"
        symbolName: "thermometer.medium"

        Card {
            SettingsToggleRow {
                title: "SoC Temperature"
                symbolName: "thermometer.medium"
                helpText: "Reads additional SoC (Apple Silicon chip) temperature data when available. Values may vary by Mac model."
                isOn: root.presentation.readsTemperatures
                onToggled: isOn => root.presentation.readsTemperatures = isOn
            }
        }
    }

    SettingsSection {
        title: "Developer"
        symbolName: "hammer"

        Card {
            SettingsToggleRow {
                title: "Diagnostic Logs"
                symbolName: "doc.text"
                helpText: "Stores sanitized local events so you can export a small JSON support file if something misbehaves."
                isOn: root.presentation.diagnosticLogsEnabled
                onToggled: isOn => root.presentation.diagnosticLogsEnabled = isOn
            }

            SettingsDivider {}

            SettingsControlRow {
                title: "Export Logs"
                symbolName: "square.and.arrow.up"
                helpText: "Exports app/system context, non-sensitive settings, a random support ID and recent sanitized events."

                SettingsSuccessMark {
                    anchors.verticalCenter: parent?.verticalCenter
                    visible: root.presentation.exportSucceeded
                    text: "Export successful"
                }

                ActionButton {
                    name: "Export"
                    description: "Export Logs"
                    enabled: root.presentation.diagnosticLogsEnabled
                    onPressed: root.presentation.exportLogs()
                }
            }

            SettingsDivider {}

            SettingsControlRow {
                title: "Reset to Defaults"
                symbolName: "arrow.counterclockwise"
                helpText: "Restores Cindertop preferences and Launch at Login to factory defaults"

                ActionButton {
                    name: "Reset"
                    description: "Reset to Defaults"
                    onPressed: root.presentation.resetToDefaults()
                }
            }
        }
    }

    Card {
        SettingsLinkRow {
            width: parent.width
            name: "About Cindertop"
            symbolName: "info.circle"
            onPressed: root.aboutRequested()
        }
    }
}
