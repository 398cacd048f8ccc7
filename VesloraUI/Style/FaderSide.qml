// SPDX-License-Identifier: MIT
// One of a fader's two sides. It never resizes what it holds.
import QtQuick
import Veslora

Item {
    id: side

    property real travel: 0
    property bool isShown: false
    readonly property bool isLeaving: !isShown && visible

    function arrive(component: Component) {
        loader.sourceComponent = null;
        loader.sourceComponent = component;
        isShown = true;
    }

    function leave() {
        isShown = false;
    }

    enabled: isShown
    opacity: presence.value
    visible: opacity > 0.001
    z: isShown ? 1 : 0
    transform: Translate {
        y: VesloraStyle.reducesMotion ? 0 : (presence.value - 1) * side.travel
    }

    Loader {
        id: loader

        anchors.horizontalCenter: parent.horizontalCenter
    }

    Spring {
        id: presence

        isFade: true
        target: side.isShown ? 1 : 0
        onIsRunningChanged: if (!isRunning && !side.isShown)
            loader.sourceComponent = null
    }
}
