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
    property alias panelWidth: panel.width

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
        width: 330
        height: body.implicitHeight + 40
        radius: Theme.radiusWindow
        depth: 24
        color: Theme.card

        Column {
            id: body

            x: 20
            y: 20
            width: parent.width - 40
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
