// SPDX-License-Identifier: MIT
// The metronome: its beats as pads, which follow what is heard, and the keys for tempo and signature.
import QtQuick
import Veslora

Item {
    id: widget

    required property MetronomeModel metronome
    required property bool isWide
    readonly property real gap: 6

    MetronomeWidgetPresenter {
        id: presenter

        metronome: widget.metronome
    }

    BeatWatch {
        id: watch

        metronome: widget.metronome
    }

    VesloraLabel {
        text: qsTr("Metronome")
        visible: widget.isWide
    }

    KeyButton {
        id: signature

        gap: widget.gap
        helpText: qsTr("Change the time signature")
        text: presenter.signature
        x: widget.isWide ? parent.width - width : 0
        onClicked: widget.metronome.cycleSignature()
    }

    KeyButton {
        anchors.left: signature.right
        anchors.leftMargin: widget.gap
        isPrimary: true
        symbol: widget.metronome.isRunning ? "stop.fill" : "play.fill"
        text: start.text
        visible: !widget.isWide
        onClicked: widget.metronome.toggle()
    }

    MetronomeTempo {
        id: tempo

        bpm: widget.metronome.bpm
        size: widget.isWide ? 30 : 26
        y: widget.isWide ? 21 : signature.height + (pads.y - signature.height - height) / 2
        onStepped: steps => presenter.change(steps)
    }

    MetronomePads {
        id: pads

        beat: watch.beat
        beats: presenter.beats
        isNumbered: widget.isWide
        radius: widget.isWide ? 5 : 3.5
        side: widget.isWide ? 22 : 14
        spacing: widget.isWide && beats > 6 ? 2 : 6
        x: widget.isWide ? parent.width - width : 0
        y: widget.isWide ? 45 : parent.height - height
    }

    Row {
        id: keys

        anchors.bottom: parent.bottom
        spacing: widget.gap
        visible: widget.isWide

        KeyButton {
            gap: keys.spacing
            helpText: qsTr("Tap the tempo")
            symbol: "tap"
            symbolSize: 15
            text: qsTr("Tap")
            onClicked: widget.metronome.tap()
        }

        KeyButton {
            gap: keys.spacing
            helpText: qsTr("Slower")
            symbol: "minus"
            text: qsTr("Slower")
            onClicked: presenter.change(-1)
        }

        KeyButton {
            helpText: qsTr("Faster")
            symbol: "plus"
            text: qsTr("Faster")
            onClicked: presenter.change(1)
        }
    }

    KeyButton {
        id: start

        anchors.bottom: parent.bottom
        anchors.right: parent.right
        isPrimary: true
        text: widget.metronome.isRunning ? qsTr("Stop") : qsTr("Start")
        visible: widget.isWide
        onClicked: widget.metronome.toggle()
    }
}
