import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A panel in the middle of the darkened window. The keyboard stays in it when its controls lead to each other.
FocusScope {
    id: root

    required property string title
    property string message
    required property bool isPresented
    // Has the keyboard's focus at first.
    required property Item initialFocus
    default property alias content: body.data
    property real panelWidth: 330

    signal cancelled

    visible: isPresented
    Keys.onEscapePressed: cancelled()
    onVisibleChanged: if (visible) {
        appearing.restart();
    }

    Accessible.role: Accessible.Dialog
    Accessible.name: title
    Accessible.description: message

    SettingsModalBackdrop {
        anchors.fill: parent
    }

    FloatingSurface {
        id: panel

        anchors.centerIn: parent
        width: Math.min(root.panelWidth * Theme.textRoom, parent.width - 2 * Theme.sm)
        height: Math.min(body.implicitHeight, parent.height - 2 * Theme.sm)
        radius: Theme.radiusWindow
        depth: 24
        color: Theme.card

        ScrollArea {
            id: body

            anchors.fill: parent
            padding: 20
        }
    }

    // A moment later all that follows from the change is done.
    Timer {
        interval: 0
        running: root.visible
        onTriggered: root.initialFocus.forceActiveFocus(Qt.TabFocusReason)
    }

    Ease {
        id: appearing

        target: root
        property: "opacity"
        from: 0.05 // what has none does not exist for assistive technology
        to: 1
    }
}
