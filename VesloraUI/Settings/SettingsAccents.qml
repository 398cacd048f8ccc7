// SPDX-License-Identifier: MIT
// A row of discs, one for each accent. The keyboard takes them for one control: Tab leads to the one in use, and the
// arrows from there to the others.
import QtQuick
import QtQuick.Templates as T
import Veslora

Item {
    id: row

    property alias title: label.title
    property alias detail: label.detail
    required property var accents
    /// The place of the one in use.
    required property int current
    signal chosen(place: int)

    /// Takes another one, around the ends, and moves the focus there.
    function step(places: int) {
        const next = (current + places + accents.length) % accents.length;
        chosen(next);
        discs.itemAt(next).forceActiveFocus(Qt.TabFocusReason);
    }

    height: Math.max(label.height, discRow.height)
    width: parent ? parent.width : 0

    SettingLabel {
        id: label

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - discRow.width - 16
    }

    // As black as the island: that is what the accents are for, and white would be nowhere on white.
    Rectangle {
        anchors.fill: discRow
        color: "black"
        radius: height / 2
    }

    Row {
        id: discRow

        readonly property int stepToTheRight: effectiveLayoutDirection === Qt.RightToLeft ? -1 : 1

        Accessible.name: row.title
        Accessible.role: Accessible.Grouping
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        leftPadding: 4
        rightPadding: 4
        spacing: 4
        Keys.onLeftPressed: row.step(-stepToTheRight)
        Keys.onRightPressed: row.step(stepToTheRight)

        Repeater {
            id: discs

            model: row.accents

            T.RadioButton {
                id: disc

                required property int index
                required property var modelData

                function act() {
                    row.chosen(index);
                }

                Accessible.name: modelData.label
                // Qt wants what has the focus to stay focusable.
                activeFocusOnTab: checked || activeFocus
                autoExclusive: false
                checked: index === row.current
                hoverEnabled: true
                implicitHeight: 26 * SettingsSizes.scale
                implicitWidth: implicitHeight
                Accessible.onPressAction: act()
                Keys.onEnterPressed: act()
                Keys.onReturnPressed: act()
                onClicked: act()
                // What shows is what the store holds, also when it refused.
                onToggled: checked = Qt.binding(() => index === row.current)

                indicator: AccentSwatch {
                    anchors.alignWhenCentered: false
                    anchors.centerIn: parent
                    color: disc.modelData.color
                    isSelected: disc.checked
                }

                SettingsTip {
                    text: disc.modelData.helpText
                    visible: disc.hovered
                }

                Rectangle {
                    anchors.fill: parent
                    border.color: "white"
                    border.width: 1.5
                    color: "transparent"
                    radius: height / 2
                    visible: disc.visualFocus
                }
            }
        }
    }
}
