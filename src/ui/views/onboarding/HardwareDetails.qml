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

        Repeater {
            model: root.presentation.detailTitles

            DetailRow {
                required property string modelData
                required property int index

                width: rows.width
                title: modelData
                value: root.presentation.detailValues[index] ?? ""
                isLast: index === root.presentation.detailTitles.length - 1
            }
        }
    }
}
