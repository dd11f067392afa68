import QtQuick
import Cindertop.Controls
import Cindertop.Settings

// One fact of the day; the icon of an application takes the symbol's place where there is one.
ContextReadoutRow {
    id: root

    property string iconSource
    readonly property bool showsAppIcon: iconSource.length > 0

    showsSymbol: !showsAppIcon

    ApplicationIcon {
        anchors.left: parent.left
        anchors.leftMargin: Theme.md - 1
        anchors.verticalCenter: parent.verticalCenter
        visible: root.showsAppIcon
        source: root.iconSource
        size: 18
    }
}
