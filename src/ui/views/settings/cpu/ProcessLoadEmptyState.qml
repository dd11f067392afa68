import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// In place of the offenders: why there are none.
Card {
    id: root

    required property string text
    required property bool isMeasuring

    visible: text.length > 0
    padding: Theme.xl

    EmptyState {
        width: parent.width
        symbolName: root.isMeasuring ? "clock" : "cpu"
        text: root.text
    }
}
