// SPDX-License-Identifier: MIT
// What one tab of the settings window is called, and what it shows.
import QtQuick

QtObject {
    required property string symbol
    required property string title
    required property Component view
}
