// SPDX-License-Identifier: MIT
// The tempo that somebody taps.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <optional>
#include <vector>

namespace veslora {

struct TapTempo {
    static constexpr double resetGap = 2.0; ///< seconds; a tap later than that begins a new row

    std::vector<Timestamp> taps; ///< the last ones of the row, four at most

    /// The mean tempo of the last four taps, this one included, in beats per minute and held to
    /// `MetronomeTempo::range`. Absent for the first tap of a row, and where no time passed.
    std::optional<int> tap(Timestamp at);

    bool operator==(const TapTempo&) const = default;
};

} // namespace veslora
