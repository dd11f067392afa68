pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One tab stop: the arrows go from tab to tab.
Item {
    id: root

    required property SettingsPresentation presentation

    implicitHeight: row.implicitHeight + 21

    Keys.onLeftPressed: move(Theme.isRightToLeft ? 1 : -1)
    Keys.onRightPressed: move(Theme.isRightToLeft ? -1 : 1)

    function move(step: int) {
        presentation.selectedTab += step;
        (tabs.itemAt(presentation.selectedTab) as SettingsTabButton).forceActiveFocus(Qt.TabFocusReason);
    }

    Flow {
        id: row

        // As wide as the tabs beside each other, where there is room for them.
        readonly property real wanted: {
            let sum = 0;
            for (let index = 0; index < tabs.count; ++index) {
                sum += (tabs.itemAt(index)?.implicitWidth ?? 0) + spacing;
            }
            return sum;
        }

        anchors.horizontalCenter: parent.horizontalCenter
        y: 10
        width: Math.min(wanted, parent.width - 2 * Theme.sm)
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
