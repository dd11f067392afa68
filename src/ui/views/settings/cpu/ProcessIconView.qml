import QtQuick
import Cindertop.Controls

// An offender's icon, or a tile with its letter.
ApplicationIcon {}
