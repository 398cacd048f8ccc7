// SPDX-License-Identifier: MIT
// A row with a button that opens a list of choices.
import QtQuick
import QtQuick.Templates as T
import Veslora

Item {
    id: row

    property alias title: label.title
    property alias detail: label.detail
    required property list<string> choices
    /// The place of what is chosen; -1 for none of them.
    required property int current
    signal chosen(index: int)

    height: Math.max(label.height, picker.height)
    width: parent ? parent.width : 0

    SettingLabel {
        id: label

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - picker.width - 16
    }

    FontMetrics {
        id: metrics

        font {
            family: VesloraStyle.systemFont
            pixelSize: SettingsSizes.control
            weight: Font.Medium
        }
    }

    T.ComboBox {
        id: picker

        /// Points before the text.
        readonly property int textMargin: 10
        /// What lies on both sides of the text, the arrow included.
        readonly property real besideText: 25 + 11 * SettingsSizes.scale
        // The height is asked for because it tells of another size of text, which the function does not.
        readonly property real longest: metrics.height > 0 ? widest() : 0

        /// Points of the longest choice.
        function widest(): real {
            let width = 0;
            for (let index = 0; index < row.choices.length; ++index) {
                width = Math.max(width, Math.ceil(metrics.advanceWidth(row.choices[index])));
            }
            return width;
        }

        function act() {
            popup.visible = !popup.visible;
        }

        // Qt 6.4 has no other place for what is chosen.
        Accessible.description: row.detail === "" ? displayText : displayText + ". " + row.detail
        Accessible.name: row.title
        anchors.right: parent.right
        currentIndex: row.current
        implicitHeight: SettingsSizes.controlHeight
        // As wide as its longest choice, which leaves the title room.
        implicitWidth: Math.min(0.6 * row.width, Math.max(140 * SettingsSizes.scale, longest + besideText))
        model: row.choices
        // The page scrolls under the wheel; nobody would notice what it chose on the way.
        wheelEnabled: false
        Accessible.onPressAction: act()
        // An open list takes these keys itself, and as well when they are let go.
        Keys.onReleased: event => {
            if ((event.key === Qt.Key_Enter || event.key === Qt.Key_Return) && !popup.visible) {
                act();
                event.accepted = true;
            }
        }
        onActivated: index => {
            row.chosen(index);
            // What shows is what the store holds, also when it refused.
            currentIndex = Qt.binding(() => row.current);
        }

        background: Rectangle {
            border.color: picker.visualFocus ? SettingsColors.accentFill : SettingsColors.controlBorder
            border.width: picker.visualFocus ? 1.5 : 1
            color: picker.down ? SettingsColors.controlPressed : picker.hovered ? SettingsColors.controlHovered : SettingsColors.control
            radius: 6
        }
        contentItem: SystemText {
            color: SettingsColors.text
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignLeft
            leftPadding: picker.mirrored ? picker.besideText - picker.textMargin : picker.textMargin
            rightPadding: picker.besideText - leftPadding
            text: picker.displayText
            verticalAlignment: Text.AlignVCenter

            font {
                pixelSize: SettingsSizes.control
                weight: Font.Medium
            }
        }
        indicator: Symbol {
            anchors.right: parent.right
            anchors.rightMargin: 9
            anchors.verticalCenter: parent.verticalCenter
            color: SettingsColors.secondary
            name: "chevron.down"
            size: 11 * SettingsSizes.scale
        }
        delegate: T.ItemDelegate {
            id: choice

            required property int index
            required property string modelData

            Accessible.name: modelData
            Accessible.selectable: true
            Accessible.selected: index === row.current
            height: SettingsSizes.controlHeight
            highlighted: picker.highlightedIndex === index
            width: ListView.view.width
            Accessible.onPressAction: clicked()

            background: Rectangle {
                color: choice.highlighted ? SettingsColors.controlPressed : "transparent"
                radius: 4
            }
            contentItem: SystemText {
                color: choice.index === row.current ? SettingsColors.accentInList : SettingsColors.text
                horizontalAlignment: Text.AlignLeft
                // Below the field's text: the list's own padding comes to it.
                leftPadding: picker.textMargin - picker.popup.padding
                rightPadding: leftPadding
                text: choice.modelData
                verticalAlignment: Text.AlignVCenter

                font {
                    pixelSize: SettingsSizes.control
                    weight: Font.Medium
                }
            }
        }
        popup: T.Popup {
            height: contentItem.implicitHeight + 8
            margins: 4
            padding: 4
            width: picker.width
            y: picker.height + 4

            background: Rectangle {
                border.color: SettingsColors.controlBorder
                color: SettingsColors.list
                radius: 6
            }
            contentItem: ListView {
                boundsBehavior: Flickable.StopAtBounds
                clip: true
                currentIndex: picker.highlightedIndex
                implicitHeight: contentHeight
                model: picker.popup.visible ? picker.delegateModel : null
            }
        }
    }
}
