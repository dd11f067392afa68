import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// What the check found, in a line and a sentence.
Item {
    id: root

    required property string text
    required property string detail
    required property int status // a TimelineMarker.Marker

    implicitHeight: sentence.y + sentence.implicitHeight

    Accessible.role: Accessible.StaticText
    Accessible.name: text + ". " + detail

    Symbol {
        anchors.left: parent.left
        y: (lineMetrics.height - height) / 2
        size: 14
        name: switch (root.status) {
            case TimelineMarker.Complete:
                return "checkmark.circle.fill";
            case TimelineMarker.Failed:
                return "xmark.circle.fill";
            case TimelineMarker.Caution:
                return "exclamationmark.triangle";
            default:
                return "clock";
        }
        color: switch (root.status) {
            case TimelineMarker.Complete:
                return Theme.levelColor(0);
            case TimelineMarker.Failed:
                return Theme.levelColor(2);
            case TimelineMarker.Caution:
                return Theme.levelColor(1);
            default:
                return Theme.secondaryText;
        }
    }

    FontMetrics {
        id: lineMetrics

        font: Theme.bodyMedium
    }

    Label {
        id: line

        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.right: parent.right
        text: root.text
        wrapMode: Text.Wrap
        font: Theme.bodyMedium
    }

    Text {
        id: sentence

        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.right: parent.right
        y: line.implicitHeight + Theme.xxs
        text: root.detail
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        lineHeight: 1.1
        color: Theme.secondaryText
        font.family: Theme.caption.family
        font.pixelSize: Theme.caption.pixelSize
        Accessible.ignored: true
    }
}
