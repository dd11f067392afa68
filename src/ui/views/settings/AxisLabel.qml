import QtQuick
import Cindertop.Controls

// Beside a chart. The chart itself speaks to assistive technology.
Text {
    color: Theme.secondaryText
    font.family: Theme.caption.family
    font.pixelSize: Theme.caption.pixelSize - 1
    Accessible.ignored: true
}
