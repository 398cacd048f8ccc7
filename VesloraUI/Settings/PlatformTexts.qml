// SPDX-License-Identifier: MIT
// The few texts that name the machine or something that only one platform has, in the words of this one. All others
// stand where they are shown.
pragma Singleton
import QtQuick

QtObject {
    readonly property string notifyWhenTimerEnds: qsTr("Also posts a desktop notification, so you see it even when you're not looking at the notch.")
}
