import QtQuick
import Cindertop.Charts
import Cindertop.Controls
import Cindertop.Settings

// Over the chart: a line and a dot at the moment that is read out, and what was measured then.
Item {
    id: root

    required property thermalHistoryReadout readout

    visible: readout.isPresent

    Rectangle {
        x: root.readout.position * root.width
        width: 1
        height: root.height
        color: Theme.secondaryText
        opacity: 0.6
    }

    Rectangle {
        x: root.readout.position * root.width - width / 2
        y: (1 - root.readout.height) * root.height - height / 2
        width: 9
        height: 9
        radius: width / 2
        color: Theme.levelColor(root.readout.level)
        border.color: Theme.card
        border.width: 2
    }

    FloatingSurface {
        readonly property real besides: root.readout.position * root.width

        x: besides > root.width / 2 ? besides - width - Theme.sm : besides + Theme.sm
        y: Theme.sm
        width: lines.width + 2 * Theme.sm
        height: lines.height + 2 * Theme.sm
        radius: Theme.radiusControl

        Accessible.role: Accessible.ToolTip
        Accessible.name: [root.readout.time, root.readout.levelLabel, root.readout.score && "score " + root.readout.score, root.readout.cpu && "CPU " + root.readout.cpu, root.readout.temperature].filter(text => text.length > 0).join(", ")

        Column {
            id: lines

            x: Theme.sm
            y: Theme.sm
            spacing: Theme.xxs

            Label {
                text: root.readout.time
                color: Theme.secondaryText
                font: Theme.caption
            }

            ReadoutLine {
                title: root.readout.levelLabel
                value: root.readout.score
                titleColor: Theme.levelText(root.readout.level)
                visible: true
            }

            ReadoutLine {
                title: "CPU"
                value: root.readout.cpu
            }

            ReadoutLine {
                title: "Temp"
                value: root.readout.temperature
            }
        }
    }
}
