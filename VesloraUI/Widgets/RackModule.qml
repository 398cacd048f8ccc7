// SPDX-License-Identifier: MIT
// One widget of the rack: at its place while it is on the page that shows, and fading where it was when it leaves.
import QtQuick
import Veslora

Item {
    id: module

    required property var entry
    required property IslandModels models
    required property Item keyLayer
    /// Points from the left to the middle of the rack.
    required property real middle

    property bool isPlaced: false
    readonly property RackModel rack: models.rack

    /// In this order: one that comes into view does so at its place, rather than on its way from the last one.
    function place() {
        offset.isLive = visible;
        offset.target = entry.offset;
        extent.isLive = visible;
        extent.target = entry.width;
        presence.isLive = isPlaced;
        presence.target = entry.isShown ? 1 : 0;
        isPlaced = true;
    }

    enabled: entry.isShown
    opacity: presence.value * (1 - 0.8 * lift.value)
    visible: presence.value > 0.001
    width: extent.value
    x: middle + offset.value

    Component.onCompleted: place()
    onEntryChanged: if (isPlaced)
        place()

    // As those that move the island itself, so that all of it moves as one.
    Spring {
        id: offset
    }

    Spring {
        id: extent
    }

    Spring {
        id: presence

        isFade: true
    }

    /// 1 while it is edited.
    Spring {
        id: editing

        target: module.rack.isEditing ? 1 : 0
    }

    /// 1 while it is dragged.
    Spring {
        id: lift

        target: module.entry.isDragged ? 1 : 0
    }

    WidgetView {
        active: module.visible || module.entry.isShown
        anchors.fill: parent
        // A widget cannot be operated while it is edited.
        enabled: !module.rack.isEditing
        isWide: module.entry.isWide
        models: module.models
        opacity: 1 - 0.65 * editing.value
        title: module.entry.title
        widget: module.entry.id
    }

    Loader {
        active: editing.value > 0.001
        anchors.fill: parent
        enabled: module.rack.isEditing
        opacity: Math.min(1, editing.value)

        sourceComponent: EditableModule {
            entry: module.entry
            keyLayer: module.keyLayer
            keyOpacity: module.opacity * editing.value
            moduleX: module.x
            rack: module.rack
        }
    }
}
