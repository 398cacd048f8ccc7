// SPDX-License-Identifier: MIT
// Shows one component at a time and lets the next one fade in over it. The side that leaves keeps the object that it
// showed and takes no input, so that nothing can be pressed, and nothing changes, on its way out.
import QtQuick
import Veslora

Item {
    id: fader

    /// What shows is made again whenever this changes.
    property string identity
    property Component component
    /// Points that something coming or going moves down or up.
    property real travel: 0

    /// The two sides take turns.
    property bool isFirst: false

    function turn() {
        const next = isFirst ? second : first;
        const leaving = isFirst ? first : second;
        isFirst = !isFirst;
        leaving.leave();
        next.travel = travel;
        next.arrive(component);
    }

    onIdentityChanged: turn()
    Component.onCompleted: if (!isFirst)
        turn()

    FaderSide {
        id: first

        anchors.fill: parent
    }

    FaderSide {
        id: second

        anchors.fill: parent
    }
}
