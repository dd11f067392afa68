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
                title: root.presentation.texts.infoTitle
                symbolName: "menubar.rectangle"
                helpText: root.presentation.texts.infoHelp

                SettingsPicker {
                    name: root.presentation.texts.infoTitle
                    labels: root.presentation.modeLabels
                    symbolNames: root.presentation.modeSymbolNames
                    currentIndex: root.presentation.modeIndex
                    onPicked: index => root.presentation.modeIndex = index
                }
            }

            SettingsDivider {}

            SettingsToggleRow {
                title: root.presentation.texts.loginTitle
                symbolName: "arrow.clockwise.circle"
                helpText: "Starts Cindertop automatically when you sign in."
                detail: root.presentation.launchAtLoginDetail
                isOn: root.presentation.launchesAtLogin
                onToggled: isOn => root.presentation.launchesAtLogin = isOn
            }

            SettingsDivider {}

            SettingsToggleRow {
                title: root.presentation.texts.dockTitle
                symbolName: "dock.rectangle"
                helpText: root.presentation.texts.dockHelp
                isOn: root.presentation.showsDockIcon
                onToggled: isOn => root.presentation.showsDockIcon = isOn
            }

            SettingsDivider {}

            SettingsToggleRow {
                title: "System Notifications"
                symbolName: "bell"
                helpText: root.presentation.texts.notificationsHelp
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
                title: root.presentation.texts.chipTitle
                symbolName: "thermometer.medium"
                helpText: root.presentation.texts.chipHelp
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
                    text: root.presentation.exportText
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
                helpText: root.presentation.texts.resetHelp

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
