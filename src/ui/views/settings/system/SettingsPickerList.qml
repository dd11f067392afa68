pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The options of a picker below each other; the arrows go from one to the next.
Column {
    id: root

    required property var labels // texts
    required property var symbolNames // texts
    required property int currentIndex

    signal picked(index: int)

    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    function focusRow(index: int) {
        rows.itemAt(Math.max(0, Math.min(index, rows.count - 1))).forceActiveFocus(Qt.TabFocusReason);
    }

    Repeater {
        id: rows

        model: root.labels

        PickerOption {
            required property string modelData
            required property int index

            width: root.width > 0 ? root.width : implicitWidth
            name: modelData
            symbolName: root.symbolNames[index] ?? ""
            isChosen: index === root.currentIndex
            Keys.onUpPressed: root.focusRow(index - 1)
            Keys.onDownPressed: root.focusRow(index + 1)
            onPressed: root.picked(index)
        }
    }
}
