// SPDX-License-Identifier: MIT
// The island: a black shape that hangs from the middle of the panel's top edge, and what its state shows on it.
import QtQuick
import Veslora

Item {
    id: root

    required property NotchViewModel model
    property alias outline: shape

    Spring {
        id: widthSpring

        target: root.model.islandWidth
    }

    Spring {
        id: heightSpring

        target: root.model.islandHeight
    }

    Spring {
        id: topRadiusSpring

        target: root.model.topRadius
    }

    Spring {
        id: bottomRadiusSpring

        target: root.model.bottomRadius
    }

    Spring {
        id: openSpring

        isFade: true
        target: root.model.isOpen ? 1 : 0
    }

    Item {
        id: island

        readonly property real middled: (parent.width - width) / 2

        height: Math.max(0, heightSpring.value)
        width: Math.max(0, widthSpring.value)
        // On whole points when it rests; on its way both edges keep to the same pace.
        x: widthSpring.isRunning ? middled : Math.round(middled)

        BorderImage {
            readonly property real margin: VesloraStyle.shadowMargin

            border {
                bottom: VesloraStyle.shadowBorder
                left: VesloraStyle.shadowBorder
                right: VesloraStyle.shadowBorder
                top: VesloraStyle.shadowBorder
            }

            height: island.height + 2 * margin
            opacity: openSpring.value
            // OPTIMIZATION: drawn when it is first seen, as the start waits for every picture.
            source: visible ? "image://veslora/shadow" : ""
            visible: opacity > 0.001
            width: island.width - 2 * shape.topRadius + 2 * margin
            x: shape.topRadius - margin
            y: 4 - margin
        }

        NotchOutline {
            id: shape

            anchors.fill: parent
            bottomRadius: bottomRadiusSpring.value
            strokeOpacity: Math.min(1, Math.max(0, openSpring.value))
            topRadius: topRadiusSpring.value
        }
    }

    // Clips what the island shows to where its outline surely encloses it. Qt clips at whole points of the window.
    Item {
        id: room

        clip: true
        height: Math.floor(shape.contentRect.height)
        width: root.width - 2 * x
        x: Math.ceil(island.x + shape.contentRect.x)

        NotchContent {
            height: island.height
            islandWidth: island.width
            model: root.model
            outline: shape
            width: root.width
            x: -room.x
        }
    }
}
