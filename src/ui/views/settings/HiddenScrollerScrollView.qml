import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What a tab shows.
ScrollArea {
    padding: Theme.lg
    spacing: Theme.lg
    widest: 960 * Theme.textRoom
}
