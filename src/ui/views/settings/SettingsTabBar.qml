pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One tab stop: the arrows go from tab to tab.
Item {
    id: root

    required property SettingsPresentation presentation

    implicitHeight: 69

    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)

    function move(step: int) {
        presentation.selectedTab += step;
        (tabs.itemAt(presentation.selectedTab) as SettingsTabButton).forceActiveFocus(Qt.TabFocusReason);
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 10
        spacing: Theme.xs

        Accessible.role: Accessible.PageTabList
        Accessible.name: "Settings"

        Repeater {
            id: tabs

            model: root.presentation.tabTitles

            SettingsTabButton {
                required property string modelData
                required property int index

                name: modelData
                symbolName: root.presentation.tabSymbolNames[index]
                isSelected: root.presentation.selectedTab === index
                onPressed: root.presentation.selectedTab = index
            }
        }
    }

    HairLine {
        anchors.bottom: parent.bottom
    }
}
