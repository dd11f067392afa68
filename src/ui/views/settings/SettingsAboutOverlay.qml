import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// What this program is.
SettingsOverlay {
    id: root

    required property SettingsPresentation presentation

    title: "Cindertop"
    message: presentation.aboutText
    panelWidth: 280
    isPresented: presentation.isAboutPresented
    initialFocus: close
    onCancelled: presentation.closeAbout()

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "flame"
        size: 48
        color: Theme.accent
    }

    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        topPadding: Theme.sm
        text: root.title
        color: Theme.text
        font.family: Theme.title.family
        font.weight: Theme.title.weight
        font.pixelSize: Theme.title.pixelSize * 1.3
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        topPadding: Theme.xs
        text: root.message
        color: Theme.secondaryText
        font: Theme.body
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        topPadding: Theme.xs
        visible: text.length > 0
        text: root.presentation.versionText
        color: Theme.secondaryText
        font: Theme.caption
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Item {
        width: 1
        height: Theme.md
    }

    SettingsAboutLink {
        id: website

        anchors.horizontalCenter: parent.horizontalCenter
        icon: "globe"
        name: "Website"
        KeyNavigation.tab: close
        KeyNavigation.backtab: close
        onPressed: root.presentation.openWebsite()
    }

    Item {
        width: 1
        height: Theme.lg
    }

    ActionButton {
        id: close

        anchors.horizontalCenter: parent.horizontalCenter
        name: "Close"
        KeyNavigation.tab: website
        KeyNavigation.backtab: website
        onPressed: root.presentation.closeAbout()
    }
}
