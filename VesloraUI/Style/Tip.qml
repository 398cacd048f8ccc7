// SPDX-License-Identifier: MIT
// A tooltip, drawn inside the island's own scene 6 points below its parent, or above it where the panel ends.
import QtQuick
import Veslora

Item {
    id: tip

    property string text
    property bool isWanted: false
    property bool isShown: false
    /// What cannot be used says nothing, though handlers of the pointer's rest go on there.
    readonly property bool isDue: isWanted && enabled && text !== ""
    readonly property Item scene: parent ? parent.Window.contentItem : null

    onIsDueChanged: {
        delay.stop();
        isShown = false;
        if (isDue)
            delay.start();
    }

    Timer {
        id: delay

        interval: 700
        onTriggered: {
            box.place();
            tip.isShown = true;
        }
    }

    PixelRectangle {
        id: box

        function place() {
            const origin = tip.parent.mapToItem(tip.scene, 0, 0);
            const below = origin.y + tip.parent.height + 6;
            const middle = origin.x + (tip.parent.width - width) / 2;
            x = Math.max(0, Math.min(middle, tip.scene.width - width));
            y = below + height <= tip.scene.height ? below : origin.y - height - 6;
        }

        borderColor: VesloraStyle.hairline
        color: VesloraStyle.traySurface
        height: label.height + 8
        parent: tip.scene
        radius: 6
        visible: tip.isShown && tip.visible
        width: label.width + 16
        z: 100

        SystemText {
            id: label

            color: VesloraStyle.textPrimary
            height: 12
            text: tip.text
            verticalAlignment: Text.AlignVCenter
            x: 8
            y: 4

            font {
                pixelSize: 10
            }
        }
    }
}
