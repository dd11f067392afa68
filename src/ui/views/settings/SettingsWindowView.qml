pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The tab bar, the selected tab, and what lies over them. While something waits for an answer, the rest of the
// window is disabled: for the pointer, the keyboard and assistive technology alike.
Rectangle {
    id: root

    required property SettingsPresentation presentation
    readonly property bool isCovered: presentation.hasConfirmation || presentation.isAboutPresented

    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    // At first; the user may change it.
    implicitWidth: 460 * Theme.textRoom
    implicitHeight: 640 * Theme.textRoom
    color: Theme.window

    onIsCoveredChanged: if (!isCovered) {
        content.forceActiveFocus();
    }

    Repeater {
        model: root.presentation.tabTitles.length

        Item {
            id: shortcut

            required property int index

            Shortcut {
                sequence: "Ctrl+" + (shortcut.index + 1)
                enabled: !root.isCovered
                onActivated: root.presentation.selectedTab = shortcut.index
            }
        }
    }

    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        enabled: !root.isCovered
        onActivated: root.presentation.selectedTab += 1
    }

    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        enabled: !root.isCovered
        onActivated: root.presentation.selectedTab -= 1
    }

    Shortcut {
        sequence: "Ctrl+W"
        enabled: !root.isCovered
        onActivated: root.Window.window.close()
    }

    FocusScope {
        id: content

        anchors.fill: parent
        enabled: !root.isCovered
        focus: true

        SettingsTabBar {
            id: tabBar

            width: parent.width
            presentation: root.presentation
        }

        SettingsTabContent {
            anchors.top: tabBar.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            presentation: root.presentation
        }
    }

    SettingsAboutOverlay {
        anchors.fill: parent
        presentation: root.presentation
    }

    SettingsConfirmationOverlay {
        anchors.fill: parent
        presentation: root.presentation
    }
}
