import QtQuick
import Cindertop.Controls

// To the web site.
LinkText {}
