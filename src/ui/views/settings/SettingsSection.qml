import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A heading with its symbol, and what belongs to it, usually a Card.
Column {
    id: root

    required property string title
    required property string symbolName
    property string helpText
    property real contentTopSpacing: 7
    default property alias content: body.data

    width: parent ? parent.width : 0
    spacing: contentTopSpacing

    Item {
        width: parent.width
        implicitHeight: Math.max(20, heading.implicitHeight)

        Symbol {
            id: symbol

            anchors.left: parent.left
            anchors.leftMargin: 2
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbolName
            size: 16
        }

        Text {
            id: heading

            anchors.left: symbol.right
            anchors.leftMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            color: Theme.text
            font: Theme.section
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        SettingsHelpButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: message.length > 0
            message: root.helpText
        }
    }

    Column {
        id: body

        width: parent.width
    }
}
