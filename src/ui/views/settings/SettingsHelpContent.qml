import QtQuick
import QtQuick.Templates as T
import Cindertop.Controls
import Cindertop.Settings

// A sentence in a small window over its help button, below it or, where there is no room, above.
T.Popup {
    id: root

    required property string message
    readonly property real below: parent.height + Theme.xs

    x: (parent.width - width) / 2
    y: below
    margins: Theme.sm
    width: Math.min(260 * Theme.textRoom, parent.Window.width - 2 * margins, implicitContentWidth + leftPadding + rightPadding)
    height: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.md
    topPadding: 10
    bottomPadding: 10
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    onAboutToShow: {
        const bottom = parent.mapToItem(null, 0, below + height).y;
        y = bottom + margins > parent.Window.height ? -height - Theme.xs : below;
    }

    background: FloatingSurface {}

    contentItem: Text {
        text: root.message
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Theme.isRightToLeft ? Text.AlignRight : Text.AlignLeft
        color: Theme.text
        font.family: Theme.caption.family
        font.pixelSize: Theme.caption.pixelSize
        lineHeight: 1.15
        Accessible.role: Accessible.ToolTip
        Accessible.name: text
    }
}
