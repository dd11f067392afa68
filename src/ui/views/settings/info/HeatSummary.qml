import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// How hot it is, in one look: level, trend, score, and why.
Item {
    id: root

    required property HeatPresentation heat

    implicitWidth: parent ? parent.width : 0
    implicitHeight: column.implicitHeight + 2 * Theme.md

    Accessible.role: Accessible.StaticText
    Accessible.name: [heat.levelText, heat.trendText, heat.scoreText, heat.reasonText].filter(text => text.length > 0).join(", ")

    Column {
        id: column

        x: Theme.md
        y: Theme.md
        width: root.width - 2 * Theme.md
        spacing: Theme.sm

        Item {
            width: parent.width
            implicitHeight: Math.max(level.implicitHeight, score.implicitHeight)

            Label {
                id: level

                anchors.left: parent.left
                width: Math.min(implicitWidth, parent.width - score.width - Theme.sm)
                elide: Text.ElideRight
                text: root.heat.levelText
                color: root.heat.level < 0 ? Theme.secondaryText : Theme.levelText(root.heat.level)
                font: Theme.title
            }

            Label {
                anchors.left: level.right
                anchors.leftMargin: Theme.sm
                anchors.right: score.left
                anchors.rightMargin: Theme.sm
                anchors.baseline: level.baseline
                text: root.heat.trendText
                elide: Text.ElideRight
                color: Theme.secondaryText
            }

            Label {
                id: score

                anchors.right: parent.right
                anchors.baseline: level.baseline
                text: root.heat.scoreText
                font: Theme.bodyMedium
            }
        }

        Rectangle {
            width: parent.width
            height: Theme.xs
            visible: root.heat.level >= 0
            radius: height / 2
            color: Theme.control

            Rectangle {
                width: Math.max(parent.height, parent.width * root.heat.share)
                height: parent.height
                radius: height / 2
                color: Theme.levelText(Math.max(root.heat.level, 0))
            }
        }

        Label {
            width: parent.width
            visible: text.length > 0
            text: root.heat.reasonText
            wrapMode: Text.Wrap
            color: Theme.secondaryText
            font: Theme.caption
        }
    }
}
