// SPDX-License-Identifier: MIT
// The strip beside the notch while the rack is edited: what is going on, the pages, and the keys that open the library
// and end it all.
import QtQuick
import Veslora

Item {
    id: header

    required property RackModel rack
    required property real notchWidth

    EditHeaderPresenter {
        id: presenter

        rack: header.rack
    }

    VesloraLabel {
        anchors.verticalCenter: keys.verticalCenter
        text: qsTr("Edit widgets")
        // What is left beside the notch, which is one item of the row.
        width: Math.max(0, Math.min(implicitWidth, keys.x - header.notchWidth - 2 * keys.spacing))
    }

    Row {
        id: keys

        anchors.right: parent.right
        height: 26
        spacing: 8
        // A notch that is lower than a key stays covered by it: above it the screen ends.
        y: Math.max(0, Math.round((parent.height - height) / 2))

        PageDots {
            anchors.alignWhenCentered: false
            anchors.verticalCenter: parent.verticalCenter
            count: header.rack.pageCount
            current: header.rack.page
            visible: presenter.hasPages
            onSelect: index => header.rack.page = index
        }

        KeyButton {
            gap: keys.spacing
            text: qsTr("+ Add")
            visible: presenter.canAdd
            onClicked: header.rack.isShowingLibrary = true
        }

        KeyButton {
            isPrimary: true
            text: qsTr("Done")
            onClicked: header.rack.exitEditing()
        }
    }
}
