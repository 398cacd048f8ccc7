// SPDX-License-Identifier: MIT
// The keys of the tray that set the space between widgets, the space itself, and the line at their right.
import QtQuick
import Veslora

Row {
    id: keys

    required property RackModel rack
    required property EditTrayPresenter presenter

    spacing: 6

    KeyButton {
        gap: keys.spacing
        helpText: keys.presenter.automaticHelp
        isSelected: keys.rack.isAutomatic
        text: qsTr("Auto")
        onClicked: keys.presenter.toggleAutomatic()
    }

    KeyButton {
        helpText: qsTr("Closer together")
        symbol: "minus"
        text: qsTr("−")
        onClicked: keys.rack.stepSpacing(-1)
    }

    ScrollWheelCatcher {
        height: parent.height
        width: 44
        onStepped: steps => keys.rack.stepSpacing(steps)

        Text {
            Accessible.description: tip.text
            Accessible.name: keys.presenter.spacingName
            Accessible.role: Accessible.StaticText
            anchors.fill: parent
            color: keys.rack.isAutomatic ? VesloraStyle.textSecondary : VesloraStyle.textPrimary
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 1
            text: keys.presenter.spacingText
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter

            font {
                family: VesloraStyle.monospacedFont
                pixelSize: 11
                weight: Font.DemiBold
            }
        }

        HoverHandler {
            id: hover
        }

        Tip {
            id: tip

            isWanted: hover.hovered
            text: qsTr("Space between widgets; scroll to change")
        }
    }

    KeyButton {
        helpText: qsTr("Further apart")
        symbol: "plus"
        text: qsTr("+")
        onClicked: keys.rack.stepSpacing(1)
    }

    Item {
        height: parent.height
        width: 17

        PixelRectangle {
            anchors.centerIn: parent
            color: VesloraStyle.hairline
            height: 18
            width: 1
        }
    }
}
