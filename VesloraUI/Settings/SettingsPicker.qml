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

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - picker.width - 16
    }

    T.ComboBox {
        id: picker

        function act() {
            popup.visible = !popup.visible;
        }

        // Qt 6.4 has no other place for what is chosen.
        Accessible.description: row.detail === "" ? displayText : displayText + ". " + row.detail
        Accessible.name: row.title
        anchors.right: parent.right
        currentIndex: row.current
        implicitHeight: 26
        implicitWidth: 140
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
            border.color: picker.visualFocus ? VesloraStyle.accentColor : "transparent"
            border.width: 1.5
            color: picker.down ? SettingsColors.controlPressed : SettingsColors.control
            radius: 6
        }
        contentItem: SystemText {
            color: SettingsColors.text
            elide: Text.ElideRight
            leftPadding: 10
            rightPadding: 26
            text: picker.displayText
            verticalAlignment: Text.AlignVCenter

            font {
                pixelSize: 12
                weight: Font.Medium
            }
        }
        indicator: Symbol {
            anchors.right: parent.right
            anchors.rightMargin: 9
            anchors.verticalCenter: parent.verticalCenter
            color: SettingsColors.secondary
            name: "chevron.down"
            size: 11
        }
        delegate: T.ItemDelegate {
            id: choice

            required property int index
            required property string modelData

            Accessible.name: modelData
            Accessible.selectable: true
            Accessible.selected: index === row.current
            height: 26
            highlighted: picker.highlightedIndex === index
            width: ListView.view.width
            Accessible.onPressAction: clicked()

            background: Rectangle {
                color: choice.highlighted ? SettingsColors.controlPressed : "transparent"
                radius: 4
            }
            contentItem: SystemText {
                color: choice.index === row.current ? VesloraStyle.accentColor : SettingsColors.text
                // Below the field's text: the list's own padding comes to it.
                leftPadding: picker.contentItem.leftPadding - picker.popup.padding
                text: choice.modelData
                verticalAlignment: Text.AlignVCenter

                font {
                    pixelSize: 12
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
                border.color: SettingsColors.line
                color: SettingsColors.control
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
