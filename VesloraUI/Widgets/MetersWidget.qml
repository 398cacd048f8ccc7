// SPDX-License-Identifier: MIT
// The rack's meters of the machine: processor, memory, and the battery or else the disk.
import QtQuick
import Veslora

Item {
    id: widget

    required property SystemSampler sampler
    required property bool isWide

    MetersWidgetPresenter {
        id: presenter

        isOnScreen: widget.visible && widget.Window.window !== null
        sampler: widget.sampler
    }

    Column {
        spacing: 4
        width: parent.width

        VesloraLabel {
            text: qsTr("System")
        }

        Repeater {
            model: presenter.rows

            MetersWidgetRow {
                isWide: widget.isWide
                width: widget.width
            }
        }
    }
}
