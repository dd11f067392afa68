import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// Between two rows of a card.
Item {
    implicitWidth: parent ? parent.width : 0
    implicitHeight: 1

    HairLine {
        x: Theme.md
        width: parent.width - 2 * Theme.md
    }
}
