import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What the rows of a card have in common: symbol, title and help at the left, the content at the right, and
// below them a detail where there is one.
Item {
    id: root

    required property string title
    required property string symbolName
    property string helpText
    property string detail
    property color detailColor: Theme.secondaryText
    default property alias content: content.data

    implicitWidth: parent ? parent.width : 0
    implicitHeight: line.height + (note.visible ? note.implicitHeight + Theme.sm : 0)

    Item {
        id: line

        width: parent.width
        height: Math.max(Theme.row, label.implicitHeight + Theme.md, content.implicitHeight + Theme.sm)

        Symbol {
            id: symbol

            x: Theme.md
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbolName
            size: 16
            color: Theme.secondaryText
        }

        // The text's own implicit width follows its width when it wraps.
        TextMetrics {
            id: metrics

            font: label.font
            text: root.title
        }

        Text {
            id: label

            anchors.left: symbol.right
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(metrics.advanceWidth) + 1, content.x - x - (help.visible ? help.width + 6 : 0) - Theme.sm)
            text: root.title
            wrapMode: Text.Wrap
            color: Theme.text
            font: Theme.body
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        SettingsHelpButton {
            id: help

            anchors.left: label.right
            anchors.leftMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            visible: message.length > 0
            message: root.helpText
        }

        Row {
            id: content

            anchors.right: parent.right
            anchors.rightMargin: Theme.md
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.sm
        }
    }

    Text {
        id: note

        anchors.top: line.bottom
        anchors.topMargin: -Theme.xs
        x: Theme.md + 16 + 10
        width: parent.width - x - Theme.md
        visible: text.length > 0
        text: root.detail
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: root.detailColor
        font: Theme.caption
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
