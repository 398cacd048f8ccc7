// SPDX-License-Identifier: MIT
// The page of widgets that the open island shows.
import QtQuick
import Veslora

Item {
    id: view

    required property IslandModels models

    RackPresenter {
        id: presenter

        availableWidth: view.width
        rack: view.models.rack
    }

    Row {
        anchors.centerIn: parent
        spacing: presenter.spacing

        Repeater {
            model: presenter.modules

            RackModule {
                height: view.height
                models: view.models
            }
        }
    }

    VesloraLabel {
        anchors.centerIn: parent
        text: qsTr("No widgets · hold or right-click to edit")
        visible: presenter.isEmpty
    }
}
