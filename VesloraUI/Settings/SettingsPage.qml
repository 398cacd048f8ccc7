// SPDX-License-Identifier: MIT
// What one tab of the settings window is called, and what it shows.
import QtQuick

QtObject {
    /// By which the program opens it; the same in every language.
    required property string name
    required property string symbol
    required property string title
    required property Component view
}
