// SPDX-License-Identifier: MIT
// The few texts that name the machine or something that only one platform has, in the words of this one. All others
// are where they are shown.
pragma Singleton
import QtQuick

QtObject {
    readonly property string awakeWhileAgentWorks: qsTr("While a Claude Code or Codex session is working, your computer doesn't sleep. The screen can still dim.")
    readonly property string lidStillSleeps: qsTr("Closing the lid still puts your computer to sleep.")
    readonly property string notifyWhenTimerEnds: qsTr("Also posts a desktop notification, so you see it even when you're not looking at the notch.")
    readonly property string otherPlayers: qsTr("When Spotify isn't playing, show browsers and other players. Spotify always comes first.")
}
