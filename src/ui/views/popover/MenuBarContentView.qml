import QtQuick
import Cindertop.Controls
import Cindertop.Popover

// From the state of the machine down to the menu.
FocusScope {
    id: root

    required property PopoverPresentation presentation

    implicitHeight: content.implicitHeight + 14

    Keys.onDownPressed: moveFocus(true)
    Keys.onUpPressed: moveFocus(false)

    function moveFocus(isForward: bool) {
        const from = Window.activeFocusItem ?? root;
        from.nextItemInFocusChain(isForward).forceActiveFocus(isForward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: root.presentation.quit()
    }

    Column {
        id: content

        x: 7
        y: 7
        width: root.width - 14

        // While it is open what is told takes no less room than it took, and always that of a line of advice, so that
        // the rows below stay where they are when monitoring is paused.
        Item {
            id: place

            property real taken: 0
            readonly property real least: summary.implicitHeight + Theme.xs + advice.implicitHeight + 10

            readonly property bool isShown: root.Window.visibility !== Window.Hidden

            width: parent.width
            implicitHeight: Math.max(told.implicitHeight, taken, least)
            onIsShownChanged: take()

            function take() {
                if (isShown) {
                    taken = Math.max(taken, told.implicitHeight);
                }
            }

            Connections {
                target: Theme

                function onChanged() {
                    place.taken = 0; // the text's size may be another
                }
            }

            Text {
                id: advice

                visible: false
                text: "A"
                font: Theme.caption
            }

            Column {
                id: told

                width: parent.width
                onImplicitHeightChanged: place.take()

                ThermalAssistantSummaryView {
                    id: summary

                    width: parent.width
                    presentation: root.presentation
                }

                Item {
                    width: parent.width
                    visible: tip.visible
                    implicitHeight: Theme.xs
                }

                ThermalAssistantTipView {
                    id: tip

                    width: parent.width
                    visible: message.length > 0
                    message: root.presentation.contents.tipMessage
                    accentColor: Theme.levelColor(root.presentation.contents.level)
                    isStill: root.presentation.contents.savesPower
                }

                Repeater {
                    model: root.presentation.contents.secondaryInsightTitles

                    SecondaryInsightView {
                        required property int index
                        required property string modelData

                        width: told.width
                        title: modelData
                        message: root.presentation.contents.secondaryInsightMessages[index] ?? ""
                    }
                }

                PopoverDivider {
                    visible: root.presentation.contents.offenderName.length > 0
                }

                Column {
                    width: parent.width
                    visible: root.presentation.contents.offenderName.length > 0
                    spacing: Theme.sm

                    Text {
                        x: 10
                        width: parent.width - 20
                        bottomPadding: 3
                        text: "Highest CPU Usage"
                        color: Theme.secondaryText
                        font: Theme.caption
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }

                    TopProcessOffenderPopoverRow {
                        width: parent.width
                        displayName: root.presentation.contents.offenderName
                        percentText: root.presentation.contents.offenderPercentText
                        iconSource: root.presentation.contents.offenderIconSource
                    }
                }
            }
        }

        PopoverDivider {
            visible: note.visible
        }

        Text {
            id: note

            x: 10
            width: parent.width - 20
            visible: text.length > 0
            topPadding: 1
            bottomPadding: 1
            text: root.presentation.note
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            color: Theme.secondaryText
            font: Theme.caption
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        PopoverDivider {}

        MenuActionButton {
            width: parent.width
            name: root.presentation.contents.toggleTitle
            symbolName: root.presentation.contents.toggleSymbolName
            onPressed: root.presentation.toggleMonitoring()
        }

        PopoverDivider {}

        MenuActionButton {
            width: parent.width
            visible: root.presentation.offersUpdateCheck
            name: "Check for Updates..."
            symbolName: "arrow.triangle.2.circlepath"
            onPressed: root.presentation.checkForUpdates()
        }

        MenuActionButton {
            width: parent.width
            name: "Help / Feedback..."
            symbolName: "questionmark.circle"
            onPressed: root.presentation.openHelp()
        }

        PopoverDivider {}

        MenuActionButton {
            width: parent.width
            name: root.presentation.settingsTitle
            symbolName: "gearshape"
            onPressed: root.presentation.openPreferences()
        }

        MenuActionButton {
            width: parent.width
            name: "Quit"
            symbolName: "power"
            shortcutText: "Ctrl+Q"
            onPressed: root.presentation.quit()
        }
    }
}
