// SPDX-License-Identifier: MIT
// The page of widgets that the open island shows, with the gestures that rearrange it.
import QtQuick
import Veslora

Item {
    id: view

    required property IslandModels models

    RackPresenter {
        id: presenter

        rack: view.models.rack
    }

    RackGestures {
        id: gestures

        anchors.fill: parent
        rack: view.models.rack
        onMenuWanted: (x, y) => menu.popup(x, y)

        Repeater {
            model: presenter.modules

            RackModule {
                height: gestures.height
                keyLayer: keys
                middle: gestures.width / 2
                models: view.models
            }
        }

        Item {
            id: keys

            anchors.fill: parent
        }

        DragGhost {
            ghost: gestures.ghost
            height: gestures.height
            models: view.models
        }
    }

    VesloraLabel {
        anchors.centerIn: parent
        text: qsTr("No widgets · hold or right-click to edit")
        visible: presenter.isEmpty
    }

    ContextMenu {
        id: menu

        text: qsTr("Edit Widgets")
        onChosen: view.models.rack.enterEditing()
    }
}
