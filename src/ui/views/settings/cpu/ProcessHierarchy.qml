import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// The processes of an offender, the busiest first; shown or folded away.
Column {
    id: root

    required property ProcessOffenderDetail offender
    required property bool isExpanded

    signal toggled

    width: parent ? parent.width : 0
    spacing: 7

    HoverRow {
        id: header

        name: "Process hierarchy"
        description: (root.isExpanded ? "Expanded" : "Collapsed") + ", " + badge.description
        width: parent.width
        implicitHeight: Math.max(28, title.implicitHeight + Theme.sm)
        onPressed: root.toggled()

        Symbol {
            id: chevron

            anchors.left: parent.left
            anchors.leftMargin: 2
            anchors.verticalCenter: parent.verticalCenter
            name: root.isExpanded ? "chevron.down" : "chevron.right"
            size: 16
        }

        Label {
            id: title

            anchors.left: chevron.right
            anchors.leftMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            text: header.name
            font: Theme.section
        }

        ProcessCountBadge {
            id: badge

            anchors.right: parent.right
            anchors.rightMargin: Theme.xs
            anchors.verticalCenter: parent.verticalCenter
            count: root.offender.processCount
        }
    }

    Card {
        visible: root.isExpanded && children.count > 0
        Accessible.role: Accessible.List
        Accessible.name: header.name

        Repeater {
            id: children

            model: root.offender.children

            ProcessChildRow {
                required property int index

                isFirst: index === 0
            }
        }
    }
}
