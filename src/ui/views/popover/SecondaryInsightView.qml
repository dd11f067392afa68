import QtQuick
import Cindertop.Controls

// A secondary insight, below the main advice.
Column {
    id: root

    required property string title
    required property string message

    leftPadding: 10
    rightPadding: 10
    topPadding: Theme.sm

    Accessible.role: Accessible.StaticText
    Accessible.name: title + ". " + message

    Label {
        width: parent.width - 20
        text: root.title
        wrapMode: Text.Wrap
        font: Theme.caption
    }

    Label {
        width: parent.width - 20
        text: root.message
        wrapMode: Text.Wrap
        color: Theme.secondaryText
        font: Theme.caption
    }
}
