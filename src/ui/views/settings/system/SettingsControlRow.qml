import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// A row with a picker or a button.
SettingsRow {}
