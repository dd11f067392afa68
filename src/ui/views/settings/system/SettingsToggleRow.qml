import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A row with a switch. It shows `isOn` and asks for the other state; what it is bound to decides.
SettingsRow {
    id: root

    required property bool isOn

    signal toggled(isOn: bool)

    SettingsSwitch {
        name: root.title
        description: root.helpText || root.explanation
        isOn: root.isOn
        onToggled: isOn => root.toggled(isOn)
    }
}
