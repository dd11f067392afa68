import QtQuick
import Cindertop.Controls

HairLine {
    implicitHeight: 9
    inset: 10
}
