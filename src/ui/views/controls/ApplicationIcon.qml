import QtQuick
import Cindertop.Controls

// Says nothing to assistive technology: the application's name stands beside it.
Image {
    property int size: 18

    width: size
    height: size
    sourceSize.width: size
    sourceSize.height: size
    fillMode: Image.PreserveAspectFit
    smooth: true
    Accessible.ignored: true
}
