import QtQuick
import Cindertop.Controls

// A symbol of the icon font. It says nothing to assistive technology: what it stands beside does.
Text {
    id: root

    required property string name
    property real size: 16
    readonly property var opposites: ({
            "chevron.left": "chevron.right",
            "chevron.right": "chevron.left"
        })

    width: size
    height: size
    text: Theme.symbolText(Theme.isRightToLeft ? opposites[name] ?? name : name)
    color: Theme.text
    font.family: Theme.iconFamily
    font.pixelSize: size
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    lineHeightMode: Text.FixedHeight
    lineHeight: size
    Accessible.ignored: true
}
