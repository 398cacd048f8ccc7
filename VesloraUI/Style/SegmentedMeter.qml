// SPDX-License-Identifier: MIT
// A row of ticks, lit from the left up to a fraction.
import Veslora

SegmentRow {
    tint: VesloraStyle.accentColor
}
