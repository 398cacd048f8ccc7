// SPDX-License-Identifier: MIT
// What lies over a module while it is edited: an outline with screws, a handle that shows that it can be dragged, and
// the keys for its size and its removal. As large as the module.
import QtQuick
import Veslora

Item {
    id: module

    required property var entry
    required property RackModel rack
    /// Above all modules, so that no neighbour's outline crosses the keys.
    required property Item keyLayer
    /// Where the module is in that layer, and how much of it shows.
    required property real moduleX
    required property real keyOpacity

    EditableModulePresenter {
        id: presenter

        rack: module.rack
        widget: module.entry.id
    }

    Item {
        id: frame

        anchors.fill: parent
        anchors.margins: -6

        PixelRectangle {
            anchors.fill: parent
            borderColor: Qt.alpha(VesloraStyle.accentColor, 0.8)
            radius: 6
        }

        Screws {
            anchors.fill: parent
            color: VesloraStyle.accentColor
        }
    }

    PixelRectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        color: "black"
        height: 12
        radius: 3
        width: 24
        y: -12

        Symbol {
            anchors.centerIn: parent
            color: VesloraStyle.accentColor
            name: "line.3.horizontal"
            size: 12
        }
    }

    ModuleHandle {
        anchors.fill: parent
        rack: module.rack
        widget: module.entry.id
        // Lets it be found; what it says of itself is its own.
        Accessible.role: Accessible.ListItem
    }

    Row {
        enabled: module.enabled
        opacity: module.keyOpacity
        parent: module.keyLayer
        spacing: -6
        visible: module.visible
        x: module.moduleX + module.width + 20 - width
        y: -20

        EditKey {
            helpText: presenter.sizeHelp
            label: presenter.sizeText
            text: presenter.sizeName
            visible: presenter.hasSizes
            onClicked: presenter.switchSize()
        }

        EditKey {
            helpText: qsTr("Remove")
            symbol: "eject.fill"
            text: presenter.removeName
            onClicked: presenter.remove()
        }
    }
}
