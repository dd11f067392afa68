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
    // Below the title; a detail takes its place, and nothing moves.
    property string explanation
    property string detail
    property color detailColor: Theme.secondaryText
    default property alias content: content.data

    implicitWidth: parent ? parent.width : 0
    implicitHeight: line.height + (note.text.length > 0 ? Math.max(note.implicitHeight, place.implicitHeight) + Theme.sm : 0)

    Item {
        id: line

        width: parent.width
        // The content goes below a title that it would leave no room for.
        readonly property real room: width - symbol.width - Theme.md - 10 - Theme.md
        readonly property real titleWidth: Math.ceil(metrics.advanceWidth) + 1
        readonly property real helpWidth: help.visible ? help.width + 6 : 0
        readonly property bool isStacked: content.implicitWidth > room / 2 && titleWidth + helpWidth + Theme.sm + content.implicitWidth > room

        height: isStacked ? label.implicitHeight + content.implicitHeight + Theme.lg : Math.max(Theme.row, label.implicitHeight + Theme.md, content.implicitHeight + Theme.sm)

        Symbol {
            id: symbol

            anchors.left: parent.left
            anchors.leftMargin: Theme.md
            anchors.verticalCenter: label.verticalCenter
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
            y: line.isStacked ? Theme.sm : (parent.height - height) / 2
            width: Math.min(line.titleWidth, line.room - line.helpWidth - (line.isStacked ? 0 : content.implicitWidth + Theme.sm))
            text: root.title
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.text
            font: Theme.body
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        SettingsHelpButton {
            id: help

            anchors.left: label.right
            anchors.leftMargin: 6
            anchors.verticalCenter: label.verticalCenter
            visible: message.length > 0
            message: root.helpText
        }

        Row {
            id: content

            anchors.right: parent.right
            anchors.rightMargin: Theme.md
            y: parent.height - height - (line.isStacked ? Theme.sm : (parent.height - height) / 2)
            spacing: Theme.sm
        }
    }

    Text {
        id: place

        width: note.width
        visible: false
        text: root.explanation
        wrapMode: Text.Wrap
        font: Theme.caption
    }

    Text {
        id: note

        anchors.top: line.bottom
        anchors.topMargin: -Theme.xs
        anchors.left: parent.left
        anchors.leftMargin: Theme.md + 16 + 10
        anchors.right: parent.right
        anchors.rightMargin: Theme.md
        visible: text.length > 0
        text: root.detail || root.explanation
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        color: root.detail.length > 0 ? root.detailColor : Theme.secondaryText
        font: Theme.caption
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
