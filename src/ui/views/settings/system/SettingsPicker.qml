pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cindertop.Controls
import Cindertop.Settings

// Shows the chosen one of a few options, and lists them all when it is pressed. The arrows choose at once.
PressArea {
    id: root

    required property var labels // texts
    property var symbolNames: [] // texts; none: the options have no symbols
    required property int currentIndex
    readonly property string currentLabel: labels[currentIndex] ?? ""

    signal picked(index: int)

    implicitWidth: current.implicitWidth + chevron.width + 2 * Theme.sm + 2
    implicitHeight: Math.max(28, current.implicitHeight + Theme.xs)
    role: Accessible.ComboBox
    cursor: Qt.PointingHandCursor
    description: currentLabel
    onPressed: options.opened ? options.close() : options.open()

    Keys.onUpPressed: pick(currentIndex - 1)
    Keys.onDownPressed: pick(currentIndex + 1)

    function pick(index: int) {
        if (index >= 0 && index < labels.length) {
            picked(index);
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusControl
        color: root.isPressed || options.opened ? Theme.pressed(Theme.control) : Theme.control
    }

    PickerLabel {
        id: current

        anchors.left: parent.left
        anchors.leftMargin: Theme.sm
        anchors.verticalCenter: parent.verticalCenter
        text: root.currentLabel
        symbolName: root.symbolNames[root.currentIndex] ?? ""
    }

    Symbol {
        id: chevron

        anchors.right: parent.right
        anchors.rightMargin: Theme.xs
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.down"
        size: 16
        color: Theme.secondaryText
    }

    T.Popup {
        id: options

        x: Theme.isRightToLeft ? 0 : root.width - width
        y: root.height + Theme.xs
        width: Math.max(root.width, implicitContentWidth + 2 * padding)
        height: implicitContentHeight + 2 * padding
        margins: Theme.sm
        padding: Theme.xs
        focus: true
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
        onOpened: (contentItem as SettingsPickerList).focusRow(root.currentIndex)

        background: FloatingSurface {}

        contentItem: SettingsPickerList {
            labels: root.labels
            symbolNames: root.symbolNames
            currentIndex: root.currentIndex
            onPicked: index => {
                options.close();
                root.pick(index);
            }
        }
    }
}
