import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A question with its two answers. Where something may be lost, the keyboard first stands on "no".
SettingsOverlay {
    id: root

    required property SettingsPresentation presentation

    title: presentation.confirmationTitle
    message: presentation.confirmationMessage
    isPresented: presentation.hasConfirmation
    initialFocus: presentation.isDestructive ? cancel : confirm
    onCancelled: presentation.cancel()

    Text {
        width: parent.width
        text: root.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        color: Theme.text
        font: Theme.title
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: parent.width
        topPadding: 6
        bottomPadding: Theme.lg
        text: root.message
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        lineHeight: 1.1
        color: Theme.secondaryText
        font: Theme.body
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Flow {
        width: parent.width
        layoutDirection: Qt.RightToLeft
        spacing: Theme.sm

        ActionButton {
            id: confirm

            name: root.presentation.confirmTitle
            kind: root.presentation.isDestructive ? ActionButton.ProminentDestructive : ActionButton.Prominent
            KeyNavigation.tab: cancel
            KeyNavigation.backtab: cancel
            KeyNavigation.left: cancel
            onPressed: root.presentation.confirm()
        }

        ActionButton {
            id: cancel

            name: root.presentation.cancelTitle
            KeyNavigation.tab: confirm
            KeyNavigation.backtab: confirm
            KeyNavigation.right: confirm
            onPressed: root.presentation.cancel()
        }
    }
}
