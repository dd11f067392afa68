import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The selected tab. The others do not exist.
Item {
    id: root

    required property SettingsPresentation presentation

    Accessible.role: Accessible.Pane
    Accessible.name: presentation.tabTitles[presentation.selectedTab]

    // In the order of SettingsTab.
    Loader {
        anchors.fill: parent
        active: root.presentation.selectedTab === 0
        sourceComponent: InfoSettingsTab {
            presentation: root.presentation.info
        }
    }

    Loader {
        anchors.fill: parent
        active: root.presentation.selectedTab === 1
        sourceComponent: MonitoringSettingsTab {
            presentation: root.presentation.monitoring
        }
    }

    Loader {
        anchors.fill: parent
        active: root.presentation.selectedTab === 2
        sourceComponent: CPUSettingsTab {
            presentation: root.presentation.cpu
        }
    }

    Loader {
        anchors.fill: parent
        active: root.presentation.selectedTab === 3
        sourceComponent: SystemSettingsTab {
            presentation: root.presentation.system
            onAboutRequested: root.presentation.presentAbout()
        }
    }
}
