import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One offender: its share now and lately, its processes, and the way to end it.
HiddenScrollerScrollView {
    id: root

    required property ProcessOffenderDetail offender
    property bool isProcessHierarchyExpanded: true

    signal backAction
    signal quitAction
    signal forceQuitAction

    Component.onCompleted: back.forceActiveFocus(Qt.OtherFocusReason)
    Keys.onEscapePressed: backAction()

    Column {
        width: parent.width
        spacing: Theme.md

        BackButton {
            id: back

            anchors.left: parent.left
            name: "Back to CPU"
            onPressed: root.backAction()
        }

        ProcessOffenderHeader {
            offender: root.offender
        }
    }

    SettingsSection {
        title: "CPU History"
        symbolName: "chart.xyaxis.line"

        Card {
            padding: Theme.md

            ProcessLoadChart {
                width: parent.width
                offender: root.offender
            }
        }
    }

    ProcessHierarchy {
        offender: root.offender
        isExpanded: root.isProcessHierarchyExpanded
        onToggled: root.isProcessHierarchyExpanded = !root.isProcessHierarchyExpanded
    }

    ProcessLoadNote {
        text: root.offender.systemOwnedNote
    }

    Flow {
        width: parent.width
        visible: root.offender.canQuit
        spacing: Theme.sm

        ActionButton {
            name: "Quit App"
            onPressed: root.quitAction()
        }

        ActionButton {
            name: "Force Quit App"
            kind: ActionButton.Destructive
            onPressed: root.forceQuitAction()
        }
    }
}
