import QtQuick
import Cindertop.Controls

// A text that says nothing to assistive technology: what it stands in does.
Text {
    textFormat: Text.PlainText
    color: Theme.text
    font: Theme.body
    horizontalAlignment: Text.AlignLeft // which follows the layout's direction
    Accessible.ignored: true
}
