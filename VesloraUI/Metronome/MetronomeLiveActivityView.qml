// SPDX-License-Identifier: MIT
// Beside the notch: a lamp that flashes with each beat as it is heard, and the tempo.
import QtQuick
import Veslora

WingsView {
    id: view

    required property MetronomeModel metronome

    leading: BeatLight {
        anchors.centerIn: parent
        isAccented: watch.beat === 0
        light: watch.light
    }
    trailing: SystemText {
        Accessible.name: qsTr("%1 beats per minute").arg(text)
        Accessible.role: Accessible.StaticText
        anchors.centerIn: parent
        color: VesloraStyle.textPrimary
        height: 14
        text: view.metronome.bpm
        verticalAlignment: Text.AlignVCenter

        font {
            family: VesloraStyle.monospacedFont
            pixelSize: 12
            weight: Font.DemiBold
        }
    }

    BeatWatch {
        id: watch

        hasLight: true
        metronome: view.metronome
    }
}
