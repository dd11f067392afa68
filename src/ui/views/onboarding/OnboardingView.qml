import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// What the program is, whether it is made for this machine, and the terms of use. As high as its content, if the screen has room.
Rectangle {
    id: root

    required property OnboardingPresentation presentation

    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    implicitWidth: 420 * Theme.textRoom
    implicitHeight: content.implicitHeight
    color: Theme.window

    ScrollArea {
        id: content

        anchors.fill: parent
        padding: 28
        spacing: Theme.xl

        OnboardingHeader {
            width: parent.width
            tagline: root.presentation.tagline
        }

        TimelineStepView {
            width: parent.width
            title: "Hardware check"
            marker: root.presentation.marker
            isActive: root.presentation.marker !== TimelineMarker.Number

            StatusLineView {
                width: parent.width
                text: root.presentation.statusTitle
                detail: root.presentation.statusDetail
                status: root.presentation.marker
            }

            Text {
                anchors.left: parent.left
                anchors.leftMargin: 20
                anchors.right: parent.right
                visible: root.presentation.hasPressure
                text: "Thermal pressure monitoring available"
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                color: Theme.secondaryText
                font.family: Theme.caption.family
                font.pixelSize: Theme.caption.pixelSize
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            OnboardingDisclosure {
                anchors.left: parent.left
                name: root.presentation.detailsName
                isOpen: root.presentation.showsDetails
                onPressed: root.presentation.showsDetails = !isOpen
            }

            HardwareDetails {
                width: parent.width
                visible: root.presentation.showsDetails
                presentation: root.presentation
            }
        }

        Column {
            width: parent.width
            spacing: Theme.lg

            Text {
                width: parent.width
                text: root.presentation.placeText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                color: Theme.secondaryText
                font: Theme.body
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            LegalAcceptance {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, parent.width)
                presentation: root.presentation
            }

            OnboardingProminentButton {
                width: parent.width
                size: OnboardingProminentButton.Large
                name: "Start Monitoring"
                symbolName: "flame"
                enabled: root.presentation.canStart
                onPressed: root.presentation.start()
            }
        }
    }
}
