import QtQuick
import Cindertop.Controls
import Cindertop.Popover

// The panel with its shadow. Where nothing composes the screen, and in an ordinary window, it fills the window with
// straight edges.
Item {
    id: root

    required property PopoverPresentation presentation

    readonly property int margin: presentation.shadowMargin
    // The light falls from above.
    readonly property int fall: margin / 5

    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    implicitWidth: (presentation.isWindow ? 320 : 272) * Theme.textRoom + 2 * margin
    implicitHeight: content.implicitHeight + 2 * margin

    TapHandler {
        // The margin is seen as what lies behind it.
        onTapped: eventPoint => {
            if (!panel.contains(panel.mapFromItem(root, eventPoint.position))) {
                root.presentation.close();
            }
        }
    }

    BorderImage {
        id: shadow

        readonly property int edge: root.margin - root.fall + 2 * Theme.radiusWindow

        anchors.fill: parent
        anchors.topMargin: root.fall * 2
        visible: root.presentation.hasCompositor
        source: visible ? "image://shadow/" + Theme.shadow.toString().substring(1) + "/" + (root.margin - root.fall) + "/"
            + Theme.radiusWindow : ""
        anchors.leftMargin: root.fall
        anchors.rightMargin: root.fall
        border.left: edge
        border.right: edge
        border.top: edge
        border.bottom: edge
        Accessible.ignored: true
    }

    Rectangle {
        id: panel

        anchors.fill: parent
        anchors.margins: root.margin
        radius: root.presentation.hasCompositor ? Theme.radiusWindow : 0
        color: Theme.window
        border.width: root.presentation.isWindow ? 0 : 1
        border.color: Theme.divider

        Accessible.role: Accessible.Pane
        Accessible.name: "Cindertop"

        ScrollArea {
            anchors.fill: parent

            MenuBarContentView {
                id: content

                width: parent.width
                focus: true
                presentation: root.presentation
            }
        }
    }
}
