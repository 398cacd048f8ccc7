// SPDX-License-Identifier: MIT
// A widget in the library: what it is, the sizes to choose from, and the key that adds it.
import QtQuick
import Veslora

Item {
    id: libraryRow

    required property var row
    required property WidgetLibraryPresenter library

    Accessible.description: row.blurb
    Accessible.name: row.title
    Accessible.role: Accessible.ListItem
    height: 34

    Item {
        height: parent.height
        width: parent.width - choice.width - 12

        SystemText {
            color: VesloraStyle.textPrimary
            elide: Text.ElideRight
            height: 16
            maximumLineCount: 1
            text: libraryRow.row.title
            verticalAlignment: Text.AlignVCenter
            width: parent.width
            y: 2

            font {
                pixelSize: 13
                weight: Font.DemiBold
            }
        }

        SystemText {
            color: VesloraStyle.textSecondary
            elide: Text.ElideRight
            font.pixelSize: 10
            height: 12
            maximumLineCount: 1
            text: libraryRow.row.blurb
            verticalAlignment: Text.AlignVCenter
            width: parent.width
            y: 20
        }
    }

    Row {
        id: choice

        anchors.right: parent.right
        height: 26
        spacing: 12
        y: 4

        VesloraLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: libraryRow.row.onlySize
            visible: text !== ""
        }

        Row {
            id: sizes

            spacing: 6
            visible: libraryRow.row.onlySize === ""

            Repeater {
                model: libraryRow.row.sizes

                KeyButton {
                    required property int modelData

                    gap: sizes.spacing
                    helpText: libraryRow.library.sizeHelp(modelData)
                    isSelected: modelData === libraryRow.row.size
                    text: modelData
                    onClicked: libraryRow.library.choose(libraryRow.row.id, modelData)
                }
            }
        }

        KeyButton {
            isPrimary: true
            text: qsTr("Add")
            onClicked: libraryRow.library.add(libraryRow.row.id)
        }
    }
}
