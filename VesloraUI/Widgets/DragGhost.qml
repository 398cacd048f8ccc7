// SPDX-License-Identifier: MIT
// The dragged widget as the pointer carries it. Once it is dropped it glides home and fades.
import QtQuick
import Veslora

Item {
    id: view

    required property var ghost
    required property IslandModels models

    /// The pointer moves it at once, its end does not.
    function place() {
        center.isLive = !ghost.isHeld && presence.value > 0.001;
        center.target = ghost.center;
        presence.isLive = !ghost.isHeld;
        presence.target = ghost.isHeld ? 1 : 0;
    }

    Component.onCompleted: place()
    onGhostChanged: place()

    enabled: false
    opacity: Math.min(1, presence.value)
    visible: opacity > 0.001
    width: ghost.width
    x: parent.width / 2 + center.value - width / 2
    y: -2

    Spring {
        id: center
    }

    Spring {
        id: presence

        isFade: true
    }

    BorderImage {
        readonly property real margin: VesloraStyle.ghostShadowMargin

        anchors.fill: parent
        anchors.margins: -6 - margin
        anchors.topMargin: 4 - 6 - margin
        anchors.bottomMargin: -4 - 6 - margin
        source: "image://veslora/ghost-shadow"

        border {
            bottom: VesloraStyle.ghostShadowBorder
            left: VesloraStyle.ghostShadowBorder
            right: VesloraStyle.ghostShadowBorder
            top: VesloraStyle.ghostShadowBorder
        }
    }

    PixelRectangle {
        anchors.fill: parent
        anchors.margins: -6
        borderColor: VesloraStyle.hairline
        color: "black"
        radius: 6
    }

    WidgetView {
        active: view.visible || view.ghost.isHeld
        anchors.fill: parent
        isWide: view.ghost.isWide
        models: view.models
        title: view.ghost.title
        widget: view.ghost.id
    }
}
