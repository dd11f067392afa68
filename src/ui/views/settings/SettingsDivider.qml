import QtQuick
import Cindertop.Controls

// Between two rows of a card.
HairLine {
    inset: Theme.md
}
