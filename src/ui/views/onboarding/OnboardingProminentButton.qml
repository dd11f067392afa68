import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// A filled button; dim while disabled.
ActionButton {
    id: root

    enum Size { Compact, Large }

    property int size: OnboardingProminentButton.Compact
    readonly property bool isLarge: size === OnboardingProminentButton.Large

    implicitHeight: (isLarge ? Theme.onboardingPrimaryButton : Theme.onboardingButton) * Theme.textRoom
    kind: ActionButton.Prominent
    font: isLarge ? Theme.bodyStrong : Theme.caption
}
