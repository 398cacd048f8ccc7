// SPDX-License-Identifier: MIT
// One session in the list: its light, its mark, its name and status, and on a wide widget what it is doing.
import QtQuick
import Veslora

Item {
    id: row

    required property var session
    required property bool isWide
    required property int overhang
    signal clicked

    Accessible.description: session.helpText
    Accessible.name: session.name
    Accessible.role: Accessible.Button
    Accessible.onPressAction: row.clicked()
    height: session.activity === "" ? 14 : 28

    PixelRectangle {
        anchors.fill: parent
        anchors.margins: -1
        anchors.leftMargin: 0
        anchors.rightMargin: 0
        color: Qt.rgba(1, 1, 1, area.pressed ? 0.1 : 0.06)
        radius: 4
        visible: area.containsMouse
    }

    Row {
        height: 14
        spacing: row.isWide ? 6 : 4
        x: row.overhang

        PixelRectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: row.session.lightColor
            height: 6
            radius: 1.5
            width: 6
        }

        Text {
            color: row.session.markColor
            height: 14
            text: row.session.mark
            verticalAlignment: Text.AlignVCenter
            visible: text !== ""
            width: 14

            font {
                bold: true
                family: row.session.markIsSymbol ? VesloraStyle.symbolFont : VesloraStyle.monospacedFont
                pixelSize: 10
            }
        }

        Text {
            color: VesloraStyle.textPrimary
            elide: Text.ElideRight
            height: 14
            maximumLineCount: 1
            text: row.session.name
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
            width: Math.min(implicitWidth, status.x - parent.x - x - parent.spacing)

            font {
                family: VesloraStyle.monospacedFont
                pixelSize: row.isWide ? 12 : 11
                preferShaping: false
                weight: Font.DemiBold
            }
        }
    }

    VesloraLabel {
        id: status

        color: row.session.labelColor
        text: row.session.label
        // The last letter's tracking hangs out.
        x: parent.width - row.overhang - width + font.letterSpacing
        y: 1
    }

    Text {
        color: VesloraStyle.textSecondary
        elide: Text.ElideRight
        height: 12
        maximumLineCount: 1
        text: row.session.activity
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        visible: text !== ""
        width: parent.width - x - row.overhang
        x: row.overhang + 12
        y: 16

        font {
            family: VesloraStyle.monospacedFont
            pixelSize: 10
            preferShaping: false
            weight: Font.Medium
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: row.clicked()
    }

    Tip {
        isWanted: area.containsMouse && !area.pressed
        text: row.session.helpText
    }
}
