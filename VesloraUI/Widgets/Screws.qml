// SPDX-License-Identifier: MIT
// Four screws that seem to hold a module, one in each corner.
import QtQuick
import Veslora

Item {
    id: screws

    required property color color

    component Screw: PixelRectangle {
        color: Qt.alpha(screws.color, 0.6)
        height: 2
        radius: 1
        width: 2
    }

    Screw {
        x: 4
        y: 4
    }

    Screw {
        x: screws.width - 6
        y: 4
    }

    Screw {
        x: 4
        y: screws.height - 6
    }

    Screw {
        x: screws.width - 6
        y: screws.height - 6
    }
}
