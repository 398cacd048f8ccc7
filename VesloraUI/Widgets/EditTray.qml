// SPDX-License-Identifier: MIT
// The tray below the rack while it is edited: the space between widgets, and the accent.
import QtQuick
import Veslora

Item {
    id: tray

    required property RackModel rack
    /// Points that it may take; its labels give way.
    property real maximumWidth: Infinity
    readonly property real padding: 12
    readonly property real labelRoom: (maximumWidth - 2 * padding - spacingKeys.width - accentKeys.width - 3 * row.spacing) / 2

    implicitHeight: 34
    implicitWidth: row.width + 2 * padding

    EditTrayPresenter {
        id: presenter

        rack: tray.rack
    }

    PixelRectangle {
        anchors.fill: parent
        borderColor: VesloraStyle.hairline
        color: VesloraStyle.traySurface
        radius: 10
    }

    Row {
        id: row

        height: 26
        spacing: 6
        x: tray.padding
        y: 4

        VesloraLabel {
            anchors.verticalCenter: parent.verticalCenter
            rightPadding: 4
            text: qsTr("Spacing")
            width: Math.max(0, Math.min(implicitWidth, tray.labelRoom))
        }

        EditSpacingKeys {
            id: spacingKeys

            height: parent.height
            presenter: presenter
            rack: tray.rack
        }

        VesloraLabel {
            anchors.verticalCenter: parent.verticalCenter
            rightPadding: 4
            text: qsTr("Accent")
            width: Math.max(0, Math.min(implicitWidth, tray.labelRoom))
        }

        Row {
            id: accentKeys

            height: parent.height
            spacing: 6

            Repeater {
                model: presenter.accents

                AccentKey {
                    required property int index
                    required property var modelData

                    accent: modelData
                    height: accentKeys.height
                    isSelected: index === presenter.accent
                    onClicked: presenter.chooseAccent(index)
                }
            }
        }
    }
}
