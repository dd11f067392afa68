pragma ComponentBehavior: Bound

import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One fact in several parts, which stand side by side.
Item {
    id: root

    required property string title
    required property var segments // texts
    required property string symbolName
    // Of the last segment, the rating; the others are plain.
    property color valueColor: Theme.text
    property string helpText

    implicitWidth: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.row, label.implicitHeight + Theme.md)

    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + segments.join(", ")

    Symbol {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: Theme.md
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbolName
        size: 16
        color: Theme.secondaryText
    }

    Label {
        id: label

        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.title
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: help.visible ? 30 : Theme.md
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.xs

        Repeater {
            model: root.segments

            Rectangle {
                id: segment

                required property string modelData
                required property int index

                width: part.implicitWidth + 2 * Theme.sm
                height: Math.max(20, part.implicitHeight + Theme.xs)
                radius: height / 2
                color: Theme.control

                Label {
                    id: part

                    anchors.centerIn: parent
                    text: segment.modelData
                    color: segment.index === root.segments.length - 1 ? root.valueColor : Theme.text
                    font: Theme.caption
                }
            }
        }
    }

    SettingsHelpButton {
        id: help

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: message.length > 0
        message: root.helpText
    }
}
