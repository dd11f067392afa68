import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// A step: its marker at the left, and beside it the title with what belongs to it below.
Item {
    id: root

    required property string title
    required property int marker
    required property bool isActive
    default property alias content: body.data

    implicitHeight: Math.max(symbol.height, body.y + body.implicitHeight)

    TimelineMarker {
        id: symbol

        anchors.left: parent.left
        marker: root.marker
    }

    Text {
        id: heading

        anchors.left: body.left
        anchors.verticalCenter: symbol.verticalCenter
        text: root.title
        color: root.isActive ? Theme.text : Theme.secondaryText
        font: root.isActive ? Theme.bodyStrong : Theme.body
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Column {
        id: body

        anchors.left: symbol.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        y: symbol.height + Theme.xs
        spacing: Theme.sm
    }
}
