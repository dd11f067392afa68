import QtQuick
import Cindertop.Controls
import Cindertop.Popover

// What would help, in a box whose border slowly turns.
Item {
    id: root

    required property string message
    required property color accentColor
    // No animation, for example where power is to be saved.
    required property bool isStill
    property real gradientStartAngle: 150

    readonly property int period: 4800 // ms for one turn
    readonly property int step: 80 // ms; a finer one would cost much and be hardly seen

    implicitHeight: Math.max(bulb.height, label.implicitHeight) + 10

    Accessible.role: Accessible.StaticText
    Accessible.name: root.message

    Timer {
        interval: root.step
        repeat: true
        running: root.visible && root.Window.visibility !== Window.Hidden && !root.isStill && !Theme.reducesMotion
        onTriggered: root.gradientStartAngle = (root.gradientStartAngle + 360 * root.step / root.period) % 360
    }

    Rectangle {
        anchors.fill: parent
        radius: 10
        color: Theme.subdued
    }

    TurningBorder {
        anchors.fill: parent
        accentColor: root.accentColor
        baseColor: Theme.divider
        radius: 10
        lineWidth: 0.9
        gradientStartAngle: root.gradientStartAngle
    }

    Symbol {
        id: bulb

        anchors.left: parent.left
        anchors.leftMargin: 7
        y: 5 + 1
        name: "lightbulb"
        size: 12
        color: root.accentColor
    }

    Text {
        id: label

        anchors.left: bulb.right
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 7
        anchors.verticalCenter: parent.verticalCenter
        text: root.message
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        textFormat: Text.PlainText
        color: Theme.text
        font.family: Theme.caption.family
        font.pixelSize: Theme.caption.pixelSize
        Accessible.ignored: true
    }
}
