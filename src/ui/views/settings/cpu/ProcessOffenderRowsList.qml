pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The offenders, the greatest share first. A row keeps the focus when it moves.
Card {
    id: root

    required property CPUPresentation presentation
    property Item opened // the row whose detail is or was open

    visible: offenders.count > 0
    Accessible.role: Accessible.List
    Accessible.name: "CPU Usage"

    function focusOpened() {
        opened?.forceActiveFocus(Qt.BacktabFocusReason);
    }

    Repeater {
        id: offenders

        model: root.presentation.offenders

        ProcessOffenderRow {
            id: row

            required property int index
            required property string offenderID

            isFirst: index === 0
            onPressed: {
                root.opened = row;
                root.presentation.select(row.offenderID);
            }
            Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        }
    }
}
