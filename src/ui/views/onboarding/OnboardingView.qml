import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

Rectangle {
    id: root

    required property OnboardingPresentation presentation

    width: 420
    height: 520
    color: Theme.window

    Symbol {
        anchors.centerIn: parent
        name: "flame"
        size: 48
        color: Theme.accent
    }
}
