import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What a surface that floats over the window looks like: card, hairline and shadow.
Rectangle {
    id: root

    property real depth: 12

    radius: Theme.radiusSurface
    color: Theme.isDark ? Theme.control : Theme.card
    border.width: 1
    border.color: Theme.divider

    BorderImage {
        readonly property int edge: root.depth + 2 * root.radius

        anchors.fill: parent
        anchors.margins: -root.depth
        anchors.topMargin: -root.depth + Theme.xs
        anchors.bottomMargin: -root.depth - Theme.xs
        z: -1
        source: "image://shadow/" + Theme.shadow.toString().substring(1) + "/" + root.depth + "/" + root.radius
        border.left: edge
        border.right: edge
        border.top: edge
        border.bottom: edge
        Accessible.ignored: true
    }
}
