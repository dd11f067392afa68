import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

Rectangle {
    id: root

    required property OnboardingPresentation presentation

    implicitHeight: rows.implicitHeight
    radius: Theme.radiusSurface
    color: Theme.card

    Column {
        id: rows

        width: parent.width

        DetailRow {
            width: parent.width
            title: "Target"
            value: "MacBook Air M-series"
        }

        DetailRow {
            width: parent.width
            title: "Model"
            value: root.presentation.model
        }

        DetailRow {
            width: parent.width
            title: "Chip"
            value: root.presentation.chip
        }

        DetailRow {
            width: parent.width
            title: "Arch"
            value: root.presentation.architecture
        }

        DetailRow {
            width: parent.width
            title: "Power"
            value: root.presentation.power
            isLast: true
        }
    }
}
