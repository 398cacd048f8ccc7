// SPDX-License-Identifier: MIT
// The rack's keys for keeping the machine awake, with the time that is left.
import QtQuick
import Veslora

Item {
    id: widget

    required property KeepAwakeModel keepAwake
    required property bool isWide
    readonly property int clockSize: isWide ? 30 : 26
    readonly property int clockHeight: Math.round(1.2 * clockSize)

    Timeline {
        id: timeline

        period: 1
    }

    KeepAwakeWidgetPresenter {
        id: presenter

        date: timeline.date
        keepAwake: widget.keepAwake
    }

    VesloraLabel {
        id: caption

        text: widget.isWide ? qsTr("Keep Awake") : qsTr("Awake")
    }

    KeepAwakeAgentKey {
        anchors.baseline: caption.baseline
        anchors.right: parent.right
        isOn: presenter.whileClaudeWorks
        onClicked: presenter.toggleAgents()
    }

    Item {
        id: status

        height: widget.clockHeight
        width: parent.width
        y: 18

        Text {
            Accessible.name: text
            Accessible.role: Accessible.StaticText
            color: presenter.isLit ? VesloraStyle.accentColor : VesloraStyle.textSecondary
            fontSizeMode: Text.HorizontalFit
            height: parent.height
            minimumPixelSize: Math.ceil(0.6 * widget.clockSize)
            text: presenter.timeText
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
            visible: !presenter.isIndefinite
            width: parent.width

            font {
                family: VesloraStyle.monospacedFont
                letterSpacing: -0.02 * widget.clockSize
                pixelSize: widget.clockSize
                weight: Font.DemiBold
            }
        }

        Symbol {
            Accessible.name: presenter.timeText
            Accessible.role: Accessible.StaticText
            anchors.verticalCenter: parent.verticalCenter
            name: "infinity"
            size: widget.isWide ? 31 : 27
            visible: presenter.isIndefinite
        }

        ScrollWheelCatcher {
            anchors.fill: parent
            visible: presenter.isTimed
            onStepped: steps => presenter.adjust(steps)

            HoverHandler {
                id: hover
            }

            Tip {
                isWanted: hover.hovered
                text: qsTr("Scroll to change the time")
            }
        }
    }

    VesloraLabel {
        text: presenter.detail
        width: parent.width
        y: status.y + status.height + 6
    }

    Row {
        id: presets

        anchors.bottom: parent.bottom
        spacing: widget.isWide ? 6 : 4
        visible: !presenter.isOn

        Repeater {
            model: presenter.presets

            KeyButton {
                id: preset

                required property int index
                required property var modelData

                gap: presets.spacing
                helpText: modelData.helpText
                padding: widget.isWide ? 10 : 6
                symbol: modelData.symbol
                symbolSize: 17
                text: modelData.symbol === "" ? modelData.label : modelData.helpText
                width: widget.isWide ? implicitWidth : VesloraStyle.smallKeyWidths[index]
                onClicked: presenter.startPreset(index)
            }
        }
    }

    Row {
        anchors.bottom: parent.bottom
        spacing: 6
        visible: presenter.isOn

        KeyButton {
            helpText: qsTr("15 minutes less")
            symbol: "minus"
            text: qsTr("−")
            visible: presenter.isTimed
            onClicked: presenter.adjust(-1)
        }

        KeyButton {
            helpText: qsTr("15 minutes more")
            symbol: "plus"
            text: qsTr("+")
            visible: presenter.isTimed
            onClicked: presenter.adjust(1)
        }

        KeyButton {
            helpText: qsTr("Stop")
            text: qsTr("Stop")
            onClicked: presenter.stop()
        }
    }
}
