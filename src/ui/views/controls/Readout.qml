import QtQuick

// A number whose digits all have one width, so that the text does not jump as it changes. The text font has such
// digits, too, but Qt does not yet let anybody ask for them.
Row {
    id: root

    required property string text
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true
    required property font font
    required property color color
    readonly property real digitWidth: widestDigit(metrics.font)

    // The font is what the binding listens to: it changes with the user's text size, and the metrics with it.
    function widestDigit(font: font): real {
        return Math.max(...Array.from("0123456789", digit => metrics.advanceWidth(digit)));
    }

    FontMetrics {
        id: metrics

        font: root.font
    }

    Repeater {
        model: root.text.length

        Label {
            required property int index

            text: root.text.charAt(index)
            width: text >= "0" && text <= "9" ? root.digitWidth : implicitWidth
            horizontalAlignment: Text.AlignHCenter
            color: root.color
            font: root.font
        }
    }
}
