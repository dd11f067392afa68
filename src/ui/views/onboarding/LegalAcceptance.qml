import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// The check box with its sentence, in which two words are links.
Row {
    id: root

    required property OnboardingPresentation presentation

    spacing: Theme.xs

    OnboardingCheckBox {
        anchors.verticalCenter: parent.verticalCenter
        name: "I accept the Terms and Privacy Policy"
        isChecked: root.presentation.acceptedLegal
        onPressed: root.presentation.acceptedLegal = !isChecked
    }

    Label {
        leftPadding: Theme.xs
        text: "I accept the"

        TapHandler {
            onTapped: root.presentation.acceptedLegal = !root.presentation.acceptedLegal
        }
    }

    LinkText {
        name: "Terms"
        onPressed: root.presentation.openTerms()
    }

    Label {
        text: "and"
    }

    LinkText {
        name: "Privacy Policy"
        onPressed: root.presentation.openPrivacyPolicy()
    }
}
