// SPDX-License-Identifier: MIT
// The widgets that are not in the rack, shown in its place for one to be added.
import QtQuick
import Veslora

Item {
    id: library

    required property RackModel rack

    implicitHeight: 112

    WidgetLibraryPresenter {
        id: presenter

        rack: library.rack
    }

    VesloraLabel {
        id: heading

        anchors.verticalCenter: back.verticalCenter
        text: qsTr("Add widget")
        width: back.x - 12
    }

    KeyButton {
        id: back

        anchors.right: parent.right
        text: qsTr("Back")
        onClicked: library.rack.isShowingLibrary = false
    }

    ListView {
        id: list

        Accessible.name: heading.text
        Accessible.role: Accessible.List
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        height: parent.height - y
        model: presenter.rows
        spacing: 6
        width: parent.width
        y: back.height + 4

        delegate: WidgetLibraryRow {
            library: presenter
            width: ListView.view.width
        }
    }

    // What follows fades into the island's black.
    Rectangle {
        anchors.bottom: list.bottom
        height: 8
        visible: !list.atYEnd
        width: list.width

        gradient: Gradient {
            GradientStop {
                color: "transparent"
                position: 0
            }

            GradientStop {
                color: "black"
                position: 1
            }
        }
    }
}
