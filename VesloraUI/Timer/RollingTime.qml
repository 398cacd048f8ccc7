// SPDX-License-Identifier: MIT
// A time left.
import QtQuick
import Veslora

RollingDigits {
    id: time

    /// Seconds.
    required property real remaining

    presenter: RollingTimePresenter {
        remaining: time.remaining
    }
}
