// SPDX-License-Identifier: MIT
// Beside the notch: a cup, and what is left of the session that keeps the machine awake.
import QtQuick
import Veslora

WingsView {
    id: view

    required property KeepAwakeModel keepAwake

    leading: Symbol {
        anchors.centerIn: parent
        color: VesloraStyle.accentColor
        name: "cup.and.saucer.fill"
        size: 15
    }
    trailing: Item {
        anchors.fill: parent

        Text {
            Accessible.ignored: text === ""
            Accessible.name: text
            Accessible.role: Accessible.StaticText
            anchors.centerIn: parent
            color: VesloraStyle.accentColor
            height: 14
            text: presenter.text
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter

            font {
                family: VesloraStyle.monospacedFont
                pixelSize: 12
                weight: Font.DemiBold
            }
        }

        Symbol {
            anchors.centerIn: parent
            color: VesloraStyle.accentColor
            name: "infinity"
            size: 17
            visible: presenter.text === ""
        }
    }

    Timeline {
        id: timeline

        period: 1
    }

    KeepAwakeActivityPresenter {
        id: presenter

        date: timeline.date
        keepAwake: view.keepAwake
    }
}
