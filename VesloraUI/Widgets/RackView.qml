// SPDX-License-Identifier: MIT
// The page of widgets that the open island shows, with the gestures that rearrange it; or, in its place, the library.
import QtQuick
import Veslora

Item {
    id: view

    required property IslandModels models
    /// Points that the island leaves to it at the moment, while it grows or shrinks.
    property real room: width
    readonly property RackModel rack: models.rack

    RackPresenter {
        id: presenter

        rack: view.rack
    }

    /// 1 while the library shows.
    Spring {
        id: library

        target: view.rack.isEditing && view.rack.isShowingLibrary ? 1 : 0
    }

    Item {
        anchors.fill: parent
        enabled: library.target === 0
        opacity: 1 - library.value
        visible: library.value < 0.999

        PageSwipeMonitor {
            anchors.fill: parent
            isActive: view.rack.pageCount > 1
            // While it is edited a finger drags a module.
            takesTouch: !view.rack.isEditing
            onStepped: step => view.rack.flipPage(step)

            RackGestures {
                id: gestures

                anchors.fill: parent
                rack: view.rack
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
        }

        VesloraLabel {
            anchors.centerIn: parent
            text: qsTr("No widgets · hold or right-click to edit")
            visible: presenter.isEmpty
        }

        ContextMenu {
            id: menu

            text: qsTr("Edit Widgets")
            onChosen: view.rack.enterEditing()
        }

        Connections {
            function onIsEditingChanged() {
                // A command may have begun it while the menu was open.
                menu.close();
            }

            target: view.rack
        }
    }

    Loader {
        active: library.value > 0.001
        enabled: library.target === 1
        height: parent.height
        opacity: Math.min(1, library.value)
        width: view.room
        x: (parent.width - width) / 2

        sourceComponent: WidgetLibraryView {
            rack: view.rack
        }
    }
}
