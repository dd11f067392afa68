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

    Text {
        leftPadding: Theme.xs
        text: "I accept the"
        color: Theme.text
        font: Theme.body
        Accessible.ignored: true

        TapHandler {
            onTapped: root.presentation.acceptedLegal = !root.presentation.acceptedLegal
        }
    }

    LinkText {
        name: "Terms"
        onPressed: root.presentation.openTerms()
    }

    Text {
        text: "and"
        color: Theme.text
        font: Theme.body
        Accessible.ignored: true
    }

    LinkText {
        name: "Privacy Policy"
        onPressed: root.presentation.openPrivacyPolicy()
    }
}
