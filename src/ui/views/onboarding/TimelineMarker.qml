import QtQuick
import Cindertop.Controls
import Cindertop.Onboarding

// How far a step is: its number, a pulsing dot, a tick, a cross or an exclamation mark. The text beside it says the same.
Rectangle {
    id: root

    // In the order of OnboardingPresentation::Marker.
    enum Marker { Number, Checking, Complete, Failed, Caution }

    required property int marker
    property int number: 1
    property bool checkingPulse: false
    readonly property bool isChecking: marker === TimelineMarker.Checking
    readonly property bool isComplete: marker === TimelineMarker.Complete
    readonly property bool isFailed: marker === TimelineMarker.Failed
    readonly property bool isCaution: marker === TimelineMarker.Caution

    width: Theme.onboardingMarker
    height: width
    radius: width / 2
    color: isComplete ? Theme.levelColor(0) : isCaution ? Theme.levelColor(1) : isFailed ? Theme.levelColor(2) : isChecking
        ? Theme.faded(Theme.accent, checkingPulse ? 0.34 : 0.1) : Theme.control
    Accessible.ignored: true

    Behavior on color {
        Ease {
            duration: Theme.slow
        }
    }

    Timer {
        interval: Math.max(Theme.slow, 1)
        repeat: true
        triggeredOnStart: true
        running: root.isChecking && !Theme.reducesMotion
        onTriggered: root.checkingPulse = !root.checkingPulse
    }

    Rectangle {
        anchors.centerIn: parent
        visible: root.isChecking
        width: 10
        height: 10
        radius: 5
        color: Theme.accent
    }

    Symbol {
        anchors.centerIn: parent
        visible: root.isComplete || root.isFailed || root.isCaution
        name: root.isFailed ? "xmark" : root.isCaution ? "exclamationmark" : "checkmark"
        size: 20
        color: Theme.window
    }

    Label {
        anchors.centerIn: parent
        visible: root.marker === TimelineMarker.Number
        text: root.number
        font: Theme.section
    }
}
