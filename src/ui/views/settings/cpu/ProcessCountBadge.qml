import QtQuick
import Cindertop.Controls

// Of how many processes an offender is. The row that it stands in says so.
Rectangle {
    id: root

    required property int count
    readonly property string description: count === 1 ? "1 process" : count + " processes"

    implicitWidth: Math.max(height, number.implicitWidth + 10)
    implicitHeight: number.implicitHeight + 2
    radius: height / 2
    color: Theme.control

    Text {
        id: number

        anchors.centerIn: parent
        text: root.count
        color: Theme.secondaryText
        font.family: Theme.caption.family
        font.pixelSize: Theme.caption.pixelSize - 1
        font.weight: Theme.caption.weight
        Accessible.ignored: true
    }
}
