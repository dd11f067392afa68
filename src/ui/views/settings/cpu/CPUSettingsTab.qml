import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Who uses the processor: all of them, or one closely.
Item {
    id: root

    required property CPUPresentation presentation

    Binding {
        target: root.presentation
        property: "isShown"
        value: root.Window.visibility !== Window.Hidden && root.Window.visibility !== Window.Minimized
    }

    Component.onDestruction: presentation.isShown = false

    // It stays while a detail lies over it, and with it the place it is scrolled to.
    HiddenScrollerScrollView {
        id: list

        anchors.fill: parent
        visible: !root.presentation.hasSelection

        SettingsSection {
            title: "CPU Usage"
            symbolName: "cpu"
            helpText: "Shows the apps or system workloads most likely to be adding CPU heat right now. CPU usage monitoring is always active."

            ProcessOffenderRowsList {
                id: rows

                presentation: root.presentation
            }

            ProcessLoadEmptyState {
                text: root.presentation.emptyText
                isMeasuring: root.presentation.isMeasuring
            }
        }

        ProcessLoadNote {
            text: root.presentation.note
        }
    }

    Loader {
        anchors.fill: parent
        active: root.presentation.hasSelection
        sourceComponent: ProcessOffenderDetailView {
            offender: root.presentation.detail
            onBackAction: {
                root.presentation.back();
                rows.focusOpened();
            }
            onQuitAction: root.presentation.quit()
            onForceQuitAction: root.presentation.forceQuit()
        }
    }
}
