import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One offender: who it is, of how many processes, and its share. Leads to its detail.
HoverRow {
    id: root

    required property string displayName
    required property string categoryLabel
    required property string percentText
    required property string graphicsText
    required property string iconSource
    required property int processCount
    required property bool isFirst

    name: displayName
    description: [percentText, graphicsText, categoryLabel, badge.description].filter(text => text.length > 0).join(", ")
    implicitWidth: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.listRow, texts.implicitHeight + Theme.sm)
    radius: Theme.radiusSurface

    SettingsDivider {
        visible: !root.isFirst
    }

    ProcessIconView {
        id: icon

        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        source: root.iconSource
        size: 24
    }

    Column {
        id: texts

        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.right: shares.left
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Row {
            width: parent.width
            spacing: Theme.sm

            Label {
                width: Math.min(implicitWidth, parent.width - badge.width - parent.spacing)
                anchors.verticalCenter: parent.verticalCenter
                text: root.displayName
                elide: Text.ElideRight
                font: Theme.bodyMedium
            }

            ProcessCountBadge {
                id: badge

                anchors.verticalCenter: parent.verticalCenter
                count: root.processCount
            }
        }

        Label {
            width: parent.width
            text: root.categoryLabel
            elide: Text.ElideRight
            color: Theme.secondaryText
            font: Theme.caption
        }
    }

    Column {
        id: shares

        anchors.right: chevron.left
        anchors.rightMargin: Theme.xs
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Label {
            anchors.right: parent.right
            text: root.percentText
        }

        Label {
            anchors.right: parent.right
            visible: text.length > 0
            text: root.graphicsText
            color: Theme.secondaryText
            font: Theme.caption
        }
    }

    Symbol {
        id: chevron

        anchors.right: parent.right
        anchors.rightMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.right"
        size: 18
        color: Theme.secondaryText
    }
}
