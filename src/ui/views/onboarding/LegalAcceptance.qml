import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// The check box with its sentence, in which two words are links.
Item {
    id: root

    required property OnboardingPresentation presentation

    implicitWidth: box.width + 2 * Theme.xs + sentence.wanted
    implicitHeight: sentence.implicitHeight

    OnboardingCheckBox {
        id: box

        anchors.left: parent.left
        y: (first.implicitHeight - height) / 2
        name: "I accept the Terms and Privacy Policy"
        isChecked: root.presentation.acceptedLegal
        onPressed: root.presentation.acceptedLegal = !isChecked
    }

    Item {
        anchors.left: box.right
        anchors.leftMargin: 2 * Theme.xs
        anchors.right: parent.right

        Flow {
            id: sentence

            // English words in their own order.
            LayoutMirroring.enabled: false
            LayoutMirroring.childrenInherit: true

            readonly property real wanted: first.width + terms.width + conjunction.width + policy.width + 3 * spacing + 1

            width: parent.width
            spacing: Theme.xs

            Label {
                id: first

                text: "I accept the"

                TapHandler {
                    onTapped: root.presentation.acceptedLegal = !root.presentation.acceptedLegal
                }
            }

            LinkText {
                id: terms

                name: "Terms"
                onPressed: root.presentation.openTerms()
            }

            Label {
                id: conjunction

                text: "and"
            }

            LinkText {
                id: policy

                name: "Privacy Policy"
                onPressed: root.presentation.openPrivacyPolicy()
            }
        }
    }
}
