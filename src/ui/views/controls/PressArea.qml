import QtQuick
import Cindertop.Controls

// What all that is pressed has in common: pointer, keyboard and assistive technology do the same, and the focus
// is seen. A press by the pointer leaves the focus where it is.
Item {
    id: root

    required property string name
    property string description
    property int role: Accessible.Button
    property int cursor: Qt.ArrowCursor
    property alias ringRadius: ring.radius
    readonly property bool isHovering: hover.hovered && enabled
    readonly property bool isPressed: tap.pressed

    signal pressed

    activeFocusOnTab: true
    opacity: enabled || !parent?.enabled ? 1 : 0.4 // by itself, not with all around it
    z: activeFocus ? 1 : 0 // its ring lies over its neighbours

    Accessible.role: root.role
    Accessible.name: root.name
    Accessible.description: root.description
    Accessible.focusable: true
    Accessible.onPressAction: if (enabled) {
        root.pressed();
    }

    Keys.onReturnPressed: event => pressByKey(event)
    Keys.onEnterPressed: event => pressByKey(event)
    Keys.onSpacePressed: event => pressByKey(event)

    // A key that is held down presses once, so that it cannot answer a question that it opened.
    function pressByKey(event: KeyEvent) {
        if (!event.isAutoRepeat) {
            pressed();
        }
    }

    HoverHandler {
        id: hover

        cursorShape: root.cursor
    }

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.pressed()
    }

    FocusRing {
        id: ring

        control: root
        z: 1
    }
}
