// SPDX-License-Identifier: MIT
// As large as the island means to be, for as long as its content is the one that shows; a leaving one keeps its size.
import QtQuick
import Veslora

Item {
    id: frame

    required property NotchViewModel model

    Binding on width {
        restoreMode: Binding.RestoreNone
        value: frame.model.islandWidth
        when: frame.enabled
    }

    Binding on height {
        restoreMode: Binding.RestoreNone
        value: frame.model.islandHeight
        when: frame.enabled
    }
}
