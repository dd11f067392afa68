import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The preferences, and help when something misbehaves.
HiddenScrollerScrollView {
    id: root

    required property SystemPresentation presentation

    signal aboutRequested

    SettingsColumns {
        first: [
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
                            currentIndex: root.presentation.preferences.menuBarInfoMode
                            onPicked: index => root.presentation.set("menuBarInfoMode", index)
                        }
                    }

                    SettingsDivider {}

                    SettingsToggleRow {
                        title: root.presentation.texts.loginTitle
                        symbolName: "arrow.clockwise.circle"
                        explanation: "Starts Cindertop automatically when you sign in."
                        detail: root.presentation.launchAtLoginDetail
                        isOn: root.presentation.launchesAtLogin
                        onToggled: isOn => root.presentation.launchesAtLogin = isOn
                    }

                    SettingsDivider {
                        visible: root.presentation.offersTaskBar
                    }

                    SettingsToggleRow {
                        visible: root.presentation.offersTaskBar
                        title: root.presentation.texts.dockTitle
                        symbolName: "dock.rectangle"
                        helpText: root.presentation.texts.dockHelp
                        isOn: root.presentation.preferences.showDockIcon
                        onToggled: isOn => root.presentation.set("showDockIcon", isOn)
                    }

                    SettingsDivider {
                        visible: root.presentation.offersTemperatureUnit
                    }

                    SettingsControlRow {
                        visible: root.presentation.offersTemperatureUnit
                        title: "Temperature Unit"
                        symbolName: "thermometer.medium"
                        helpText: "By region follows the measurement units of your session, whatever its language."

                        SettingsPicker {
                            name: "Temperature Unit"
                            labels: ["By region", "°C", "°F"]
                            currentIndex: root.presentation.preferences.temperatureUnit
                            onPicked: index => root.presentation.set("temperatureUnit", index)
                        }
                    }
                }
            },
            SettingsSection {
                title: "Alerts and Advice"
                symbolName: "bell"

                Card {
                    SettingsToggleRow {
                        title: "System Notifications"
                        symbolName: "bell"
                        explanation: root.presentation.texts.notificationsHelp
                        detail: root.presentation.notificationsDetail
                        detailColor: Theme.destructive
                        isOn: root.presentation.preferences.notificationsEnabled
                        onToggled: isOn => root.presentation.set("notificationsEnabled", isOn)
                    }

                    SettingsDivider {}

                    SettingsControlRow {
                        title: "Notify From"
                        symbolName: "bell.badge"
                        helpText: "Choose the lowest level that brings a notification."

                        SettingsPicker {
                            name: "Notify From"
                            labels: ["Serious", "Critical"]
                            currentIndex: root.presentation.preferences.notificationMinimumLevel
                            onPicked: index => root.presentation.set("notificationMinimumLevel", index)
                        }
                    }

                    SettingsDivider {}

                    SettingsControlRow {
                        title: "Advice"
                        symbolName: "lightbulb"
                        helpText: "Concise shows the main advice alone. Detailed adds up to two more things worth knowing."

                        SettingsPicker {
                            name: "Advice"
                            labels: ["Concise", "Detailed"]
                            currentIndex: root.presentation.preferences.recommendationVerbosity
                            onPicked: index => root.presentation.set("recommendationVerbosity", index)
                        }
                    }

                    SettingsDivider {}

                    SettingsToggleRow {
                        title: "Power and Displays"
                        symbolName: "display"
                        helpText: "Gives advice on displays, a closed lid and charging, too."
                        isOn: root.presentation.preferences.showContextInsights
                        onToggled: isOn => root.presentation.set("showContextInsights", isOn)
                    }

                    SettingsDivider {}

                    SettingsToggleRow {
                        title: "Busiest Applications"
                        symbolName: "cpu"
                        explanation: "Ranks the applications that use the processor."
                        detail: root.presentation.ranksApplicationsDetail
                        isOn: root.presentation.preferences.showProcessOffenders
                        onToggled: isOn => root.presentation.set("showProcessOffenders", isOn)
                    }
                }
            }
        ]
        second: [
            SettingsSection {
                title: "History"
                symbolName: "clock"

                Card {
                    SettingsToggleRow {
                        title: "Record History"
                        symbolName: "chart.xyaxis.line"
                        helpText: "Records the last hour and a summary of the day. Switching it off deletes what is recorded."
                        isOn: root.presentation.preferences.historyEnabled
                        onToggled: isOn => root.presentation.set("historyEnabled", isOn)
                    }

                    SettingsDivider {}

                    SettingsControlRow {
                        title: "Shown History"
                        symbolName: "timer"
                        helpText: "Choose how much of the recorded hour the chart shows. No more than an hour is recorded."

                        SettingsPicker {
                            name: "Shown History"
                            labels: root.presentation.historyLengthLabels
                            currentIndex: root.presentation.historyLengthIndex
                            onPicked: index => root.presentation.historyLengthIndex = index
                        }
                    }
                }
            },
            SettingsSection {
                title: "Sensors"
                symbolName: "thermometer.medium"

                Card {
                    SettingsToggleRow {
                        title: root.presentation.texts.chipTitle
                        symbolName: "thermometer.medium"
                        helpText: root.presentation.texts.chipHelp
                        isOn: root.presentation.preferences.experimentalTemperatureSensorsEnabled
                        onToggled: isOn => root.presentation.set("experimentalTemperatureSensorsEnabled", isOn)
                    }
                }
            },
            SettingsSection {
                title: "Developer"
                symbolName: "hammer"

                Card {
                    SettingsToggleRow {
                        title: "Diagnostic Logs"
                        symbolName: "doc.text"
                        helpText: "Stores sanitized local events so you can export a small JSON support file if something misbehaves."
                        isOn: root.presentation.preferences.diagnosticLogsEnabled
                        onToggled: isOn => root.presentation.set("diagnosticLogsEnabled", isOn)
                    }

                    SettingsDivider {}

                    SettingsControlRow {
                        title: "Export Logs"
                        symbolName: "square.and.arrow.up"
                        explanation: "Exports app/system context, non-sensitive settings, a random support ID and recent sanitized events."
                        detail: root.presentation.exportSucceeded ? root.presentation.exportText : ""
                        detailColor: Theme.levelText(0)

                        ActionButton {
                            name: "Export"
                            description: "Export Logs"
                            enabled: root.presentation.preferences.diagnosticLogsEnabled
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
            },
            Card {
                SettingsLinkRow {
                    width: parent.width
                    name: "About Cindertop"
                    symbolName: "info.circle"
                    onPressed: root.aboutRequested()
                }
            }
        ]
    }
}
