import QtQuick
import Cindertop.Controls

// How what changes moves.
PropertyAnimation {
    duration: Theme.quick
    easing.type: Easing.InOutQuad
}
